#include "nurvex7/platform/brevolt7/paint_pass.h"

#include "nurvex7/platform/brevolt7/element_painter.h"
#include "nurvex7/platform/brevolt7/element_ref.h"

#include <cstddef>

namespace brevolt7 {

namespace {

/// Marks an element as being painted, also when painting throws.
class PaintingMark {
public:
    PaintingMark(const CElementRef& element, bool& mark, DirtyArea& area)
        : held(element), flag(mark), in_painting(area) {
        flag = true;
    }
    PaintingMark(const PaintingMark&) = delete;
    PaintingMark& operator=(const PaintingMark&) = delete;
    ~PaintingMark() {
        if (held) {
            flag = false;
            in_painting.Clear();
        }
    }

private:
    CElementRef held;
    bool& flag;
    DirtyArea& in_painting;
};

/// Brackets the drawing of one element.
class PaintBracket {
public:
    explicit PaintBracket(tamsel7::IPainter& p) : painter(p) {
        painter.BeginPaint(tamsel7::IPainter::StdSettings::STANDARD);
    }
    PaintBracket(const PaintBracket&) = delete;
    PaintBracket& operator=(const PaintBracket&) = delete;
    ~PaintBracket() { painter.EndPaint(); }

private:
    tamsel7::IPainter& painter;
};

} // namespace

void PaintPass::Update(CVisualElement* element) {
    if (!element->visible) {
        return;
    }
    const CElementRef self(element);
    element->UpdateElement();
    for (std::size_t i = 0; self && i < element->children.size(); ++i) {
        Update(element->children[i]);
    }
}

void PaintPass::Paint(CVisualElement* element, const pixel_rect& area) {
    const tamsel7::point<int> corner = element->ToWindow({0, 0});
    const pixel_rect bounds = element->GetBounds();
    const pixel_rect own =
        intersection(moved(united(bounds, element->GetDrawBounds()), corner.x, corner.y), area);
    if (!element->visible || is_empty(own)) {
        return;
    }
    DirtyArea covered = painted;
    covered.Move(-corner.x, -corner.y);
    covered.ClipTo(bounds);
    element->dirty.Add(covered);
    const CElementRef self(element);
    if (element->changed || !element->dirty.IsEmpty()) {
        paint_one(element, own, area);
    }
    const pixel_rect inner = intersection(moved(bounds, corner.x, corner.y), area);
    for (std::size_t i = 0; self && i < element->children.size(); ++i) {
        Paint(element->children[i], inner);
    }
}

void PaintPass::paint_one(CVisualElement* element, const pixel_rect& own, const pixel_rect& outer) {
    const tamsel7::point<int> corner = element->ToWindow({0, 0});
    const pixel_rect bounds = element->GetBounds();
    const pixel_rect own_pixels = moved(own, -corner.x, -corner.y);
    element->changed = false;
    if (element->IsFullRepainted()) {
        element->dirty.Add(bounds);
    }
    element->in_painting = element->dirty;
    element->in_painting.ClipTo(own_pixels);
    element->dirty.Clear();

    const CElementRef self(element);
    ElementPainter own_painter(painter, corner, bounds, own_pixels,
                               moved(outer, -corner.x, -corner.y));
    {
        const PaintBracket bracket(own_painter);
        const PaintingMark mark(self, element->painting, element->in_painting);
        element->OnDraw(&own_painter);
        if (self) {
            painted.Add(moved(element->in_painting.GetExtent(), corner.x, corner.y));
        }
    }
    touched = united(touched, own_painter.HasPaintedOutside() ? outer : own);
}

} // namespace brevolt7
