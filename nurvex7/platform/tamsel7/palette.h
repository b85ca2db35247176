#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/color.h"

namespace tamsel7 {

/// The colours that the platform's user has chosen, by index. Index 3 is the view background.
class NURVEX7_API SysPalette {
public:
    static constexpr int VIEW_BACKGROUND = 3;
    static constexpr int COUNT = 32;

    /// The colour of an index; an index outside gives a default colour.
    _color GetColor(int index) const;

    /// Sets the colour of an index, for hosts that follow a toolkit's palette. An index outside is
    /// ignored.
    void SetColor(int index, const _color& color);

    SysPalette();

private:
    _color colors[COUNT];
};

/// The one palette of the process. White view background until a host says otherwise.
NURVEX7_API SysPalette& GetSysPalette();

} // namespace tamsel7
