// Drag and drop between the elements of a window.
#include "nurvex7/platform/brevolt7/element_painter.h"
#include "nurvex7/platform/brevolt7/window_control_inside.h"

#include <cstdlib>

namespace brevolt7 {

namespace {

constexpr unsigned LEFT_ONLY = 1U << static_cast<unsigned>(tamsel7::MouseButton::LEFT);

} // namespace

/// Asks the pressed element, and those around it, whether something is dragged from there: once a
/// press of the left button, when the pointer has left the place of it.
void CWindowControl::Inside::OfferDrag() {
    const int far = control.drag_distance;
    if (drag_offered || !pressed || buttons != LEFT_ONLY ||
        (std::abs(last.at.x - press_at.x) <= far && std::abs(last.at.y - press_at.y) <= far)) {
        return;
    }
    drag_offered = true;
    const Running running_event(*this);
    DragInfo info;
    CElementRef source;
    const bool accepted = climb(pressed.Get(), press_at, [&](const CElementRef& e, const auto& at) {
        source = e;
        return e->HandleStartDragging(at.x, at.y, info);
    });
    if (running_event && accepted && source && !capture) {
        dragging = true;
        captured_in_press = true;
        drag_source = source;
        drag = info;
    }
}

bool CWindowControl::Inside::DragTo(const tamsel7::point<int>& at) {
    const Running running_event(*this);
    InvalidateDragItem();
    CElementRef target;
    const bool found = climb(Find(at), at, [&](const CElementRef& e, const auto& place) {
        const bool accepted = e->HandleDragOver(drag_source.Get(), place.x, place.y, drag);
        target = accepted ? e : CElementRef();
        return accepted;
    });
    if (running_event) {
        drag_target = target;
        InvalidateDragItem();
    }
    return found;
}

bool CWindowControl::Inside::Drop(const tamsel7::point<int>& at) {
    const Running running_event(*this);
    DragTo(at);
    // The drag may have been cancelled by whoever it passed.
    if (!running_event || !dragging) {
        return true;
    }
    InvalidateDragItem();
    const CElementRef source = drag_source;
    const CElementRef target = drag_target;
    DragInfo info = drag;
    dragging = false;
    pressed = drag_source = drag_target = CElementRef();
    if (target) {
        const tamsel7::point<int> place = target->FromWindow(at);
        target->HandleDropDone(source.Get(), place.x, place.y, info);
    }
    if (source) {
        source->HandleDragFinished(target.Get(), info);
    }
    return true;
}

void CWindowControl::Inside::CancelDrag() {
    if (!dragging) {
        return;
    }
    InvalidateDragItem();
    const CElementRef source = drag_source;
    DragInfo info = drag;
    dragging = false;
    drag_source = drag_target = CElementRef();
    if (source) {
        source->HandleDragFinished(nullptr, info);
    }
}

/// What the item covers, or covered, is painted anew: it leaves no pixels behind.
void CWindowControl::Inside::InvalidateDragItem() {
    if (!dragging && is_empty(drag_item_shown)) {
        return;
    }
    for (const pixel_rect& r : {drag_item_shown, moved(drag.item, last.at.x, last.at.y)}) {
        if (!is_empty(r)) {
            control.InvalidateRect(r.left, r.top, r.right, r.bottom, false);
        }
    }
}

void CWindowControl::Inside::DrawDragItem(tamsel7::IPainter& painter) {
    drag_item_shown = {};
    if (!dragging || !drag_source || is_empty(drag.item)) {
        return;
    }
    const pixel_rect client = moved(control.GetClientRect(), -last.at.x, -last.at.y);
    const pixel_rect area = intersection(drag.item, client);
    ElementPainter own(painter, last.at, drag.item, area, area);
    own.BeginPaint(tamsel7::IPainter::StdSettings::STANDARD);
    drag_source->HandleDrawDragItem(&own, drag, static_cast<bool>(drag_target), drag_target.Get());
    own.EndPaint();
    drag_item_shown = moved(area, last.at.x, last.at.y);
}

} // namespace brevolt7
