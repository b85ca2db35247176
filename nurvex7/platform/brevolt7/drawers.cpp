#include "nurvex7/platform/brevolt7/drawers.h"

#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>

namespace brevolt7 {

void FocusRectDrawer::DrawRect(tamsel7::IPainter* painter, double left, double top, double right,
                               double bottom) const {
    painter->DrawFocusFrame(std::min(left, right), std::min(top, bottom), std::max(left, right),
                            std::max(top, bottom));
}

void FocusRectDrawer::DrawSelection(tamsel7::IPainter* painter, double old_start_x,
                                    double old_start_y, double new_start_x, double new_start_y,
                                    double old_end_x, double old_end_y, double new_end_x,
                                    double new_end_y, bool visible, bool first) const {
    if (!first) {
        DrawRect(painter, old_start_x, old_start_y, old_end_x, old_end_y);
    }
    if (visible) {
        DrawRect(painter, new_start_x, new_start_y, new_end_x, new_end_y);
    }
}

} // namespace brevolt7
