#pragma once

#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/brevolt7/visual_element.h"

namespace brevolt7 {

/// One walk over a tree of elements that paints what has changed.
///
/// What one element paints lies over whatever was painted before it, and under what comes after it:
/// so everything later that overlaps it is painted again there.
///
/// Space   pixels of the window
class PaintPass {
public:
    explicit PaintPass(tamsel7::IPainter& window_painter) : painter(window_painter) {}

    /// UpdateElement of the element and all that it owns, as far as visible.
    static void Update(CVisualElement* element);
    /// Paints the element and all that it owns inside an area.
    void Paint(CVisualElement* element, const pixel_rect& area);
    /// The rectangle around what may have been painted.
    pixel_rect GetTouched() const { return touched; }

private:
    void paint_one(CVisualElement* element, const pixel_rect& own, const pixel_rect& outer);

    tamsel7::IPainter& painter;
    DirtyArea painted;
    pixel_rect touched;
};

} // namespace brevolt7
