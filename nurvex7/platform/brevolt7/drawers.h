#pragma once

#include "nurvex7/export.h"

namespace tamsel7 {
class IPainter;
}

namespace brevolt7 {

/// The look of a rubber rectangle that has none.
class DummyDrawer {};

/// Draws a focus frame on pixels that stay, and takes it away again.
///
/// Space   the painter's current coordinates; corners may come in any order
class NURVEX7_API FocusRectDrawer {
public:
    /// Carried for applications; frames of every style look the same.
    int drawer_style = 0;

    /// Draws the frame; the same call again erases it.
    void DrawRect(tamsel7::IPainter* painter, double left, double top, double right,
                  double bottom) const;

    /// Moves the frame from the old rectangle to the new one. Where `first` is true, there is no
    /// old one; where `visible` is false, there will be no new one.
    void DrawSelection(tamsel7::IPainter* painter, double old_start_x, double old_start_y,
                       double new_start_x, double new_start_y, double old_end_x, double old_end_y,
                       double new_end_x, double new_end_y, bool visible, bool first) const;
};

} // namespace brevolt7
