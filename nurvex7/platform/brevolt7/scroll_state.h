#pragma once

#include "nurvex7/export.h"

namespace brevolt7 {

class IScrollModel;

/// What a scroll bar shows: a range, and the part of it that the view has.
///
/// Space   logical
struct NURVEX7_API ScrollState {
    double from = 0;
    double to = 0;
    double start = 0;
    double span = 0;

    /// The state of a model whose view has so many pixels; the range is never smaller than the
    /// view. Nothing without a model.
    static ScrollState Of(const IScrollModel* model, int pixels);
    /// True where the view does not show the whole range; what is less than half a pixel is no
    /// matter.
    bool IsScrollable(const IScrollModel* model) const;
    bool operator==(const ScrollState&) const = default;
};

} // namespace brevolt7
