#pragma once

#include "nurvex7/platform/tamsel7/color.h"

#include <string>

namespace tamsel7 {

/// A font by name, style bits and size. An empty name is the platform's sans serif. The size is in
/// device units of the painter: a drawer that zooms scales it itself.
struct font {
    std::string name;
    int style = 4;
    int size = 0;
    int reserved_1 = 0;
    int reserved_2 = 0;
    double factor = 1.0;
};

/// Line tool. Style 1 is a solid line; the width is in device units.
struct pen {
    _color color;
    int width = 1;
    int style = 1;
    int reserved_1 = 0;
    int reserved_2 = 0;
};

/// Fill tool: style 1 fills, style 0 is hollow.
struct brush {
    _color color;
    int style = 0;
    int reserved_1 = 0;
    int reserved_2 = 0;
    int reserved_3 = 0;
};

} // namespace tamsel7
