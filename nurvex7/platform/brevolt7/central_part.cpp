#include "nurvex7/platform/brevolt7/central_part.h"

#include "nurvex7/platform/brevolt7/element_ref.h"

#include <algorithm>
#include <cstdlib>

namespace brevolt7 {

namespace {

/// What shows of an element. Space: pixels of the window.
pixel_rect visible_part(const CVisualElement* element) {
    pixel_rect part = element->GetBounds();
    for (const CVisualElement* e = element; e != nullptr; e = e->parent) {
        if (!e->IsVisible()) {
            return {};
        }
        const pixel_rect place = e->GetPos();
        part = moved(intersection(part, e->GetBounds()), place.left, place.top);
    }
    return is_empty(part) ? pixel_rect{} : part;
}

/// Elements of one pixel show nothing of their own.
bool covers(const CVisualElement* element) {
    const pixel_rect bounds = element->GetBounds();
    return element->IsVisible() && (bounds.right > 1 || bounds.bottom > 1);
}

bool has_covering_child(const CVisualElement* element) {
    const auto& children = element->GetChildren();
    return std::any_of(children.begin(), children.end(), covers);
}

/// True where something lies over an element: on it, or beside it or its parents and later made.
bool is_covered(const CVisualElement* element, const pixel_rect& part) {
    for (const CVisualElement* e = element; e->parent != nullptr; e = e->parent) {
        const auto& siblings = e->parent->GetChildren();
        const tamsel7::point<int> corner = e->parent->ToWindow({0, 0});
        const auto above = std::find(siblings.begin(), siblings.end(), e) + 1;
        if (std::any_of(above, siblings.end(), [&](const CVisualElement* other) {
                return covers(other) &&
                       !is_empty(intersection(part, moved(other->GetPos(), corner.x, corner.y)));
            })) {
            return true;
        }
    }
    return has_covering_child(element);
}

} // namespace

CCentralPart::CCentralPart(CVisualElement* parent_element, const tamsel7::size<int>& size,
                           Alignment alignment)
    : CScrollableElement(parent_element, size, alignment) {
    SetTakesFocus(true);
}

bool CCentralPart::IsFullRepainted() const {
    return false;
}

bool CCentralPart::ScrollContent(int dx, int dy) {
    const pixel_rect part = visible_part(this);
    const bool all_new =
        std::abs(dx) >= part.right - part.left || std::abs(dy) >= part.bottom - part.top;
    if (GetControl() == nullptr || IsTransparent() || all_new || is_covered(this, part) ||
        !GetControl()->ScrollPixels(part, dx, dy)) {
        return false;
    }
    MoveDirty(dx, dy);
    const tamsel7::point<int> corner = ToWindow({0, 0});
    const pixel_rect own = moved(part, -corner.x, -corner.y);
    InvalidateRect({own.left, own.top, own.left + dx, own.bottom});
    InvalidateRect({own.right + dx, own.top, own.right, own.bottom});
    InvalidateRect({own.left, own.top, own.right, own.top + dy});
    InvalidateRect({own.left, own.bottom + dy, own.right, own.bottom});
    return true;
}

void CCentralPart::ProcessSetControl(IControl* control) {
    CScrollableElement::ProcessSetControl(control);
    StopRepeat();
}

void CCentralPart::SetCoordSystem(tamsel7::IPainter* painter) {
    tamsel7::IPainter::MapMode mode = tamsel7::IPainter::MapMode::MAP_DEVICE;
    tamsel7::IPainter::CoordInfo info;
    painter->GetCoordSystem(mode, &info);
    FillCoordInfo(&info);
    painter->SetCoordSystem(tamsel7::IPainter::MapMode::MAP_LOGICAL, &info);
}

void CCentralPart::SetPos(const tamsel7::rectangle<int>& place, bool repaint) {
    const CElementRef self(this);
    CScrollableElement::SetPos(place, repaint);
    if (!self) {
        return;
    }
    for (IScrollModel* const model : {GetVertScroll(), GetHorzScroll()}) {
        if (model != nullptr) {
            model->Update();
        }
    }
}

void CCentralPart::ProcessRepeatOperation() {
    CScrollableElement::ProcessRepeatOperation();
}

} // namespace brevolt7
