// What the rubber rectangles do to the view.
#include "nurvex7/model/moving.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/viewer/content.h"
#include "nurvex7/viewer/pixel.h"

#include <algorithm>
#include <cmath>

namespace nurvex7 {

using brevolt7::CElementRef;

namespace {

/// A rectangle that is not larger than this in both directions is a slip of the hand. Space: graph.
constexpr double SMALLEST_RECTANGLE = 20.0;

} // namespace

void CContent::ShiftProcessing(drag_rubber* /*rubber*/, position /*start*/, position cur,
                               position prev) {
    if (pressed_nodes.empty()) {
        return;
    }
    const Node pressed = pressed_nodes.front();
    if (node_drag_allowed && shows(pressed) && pressed.GetOwned().GetCount() == 0) {
        MoveNode(pressed, cur.x - grab_dx, cur.y - grab_dy);
        RenewView(true);
        return;
    }
    const CElementRef self(this);
    SetStartX(GetHorzStart() - (cur.x - prev.x));
    if (self) {
        SetStartY(GetVertStart() - (cur.y - prev.y));
    }
}

void CContent::EndShiftProcessing(drag_rubber* /*rubber*/, position /*start*/, position /*end*/) {
    end_press();
}

void CContent::CancelShiftProcessing(drag_rubber* /*rubber*/) {
    HandleCaptureLost();
}

/// The release of a drag that was cut off never comes, and a press must not wait for it. Where one
/// rubber rectangle takes the capture from the other, the press goes on.
void CContent::HandleCaptureLost() {
    const CVisualElement* const holder =
        GetControl() != nullptr ? GetControl()->GetCapture() : nullptr;
    if (holder == nullptr || !holder->IsInside(this)) {
        end_press();
    }
}

void CContent::end_press() {
    end_grab();
    pressed_nodes.clear();
}

void CContent::end_grab() {
    if (grab_pending) {
        if (GetControl() != nullptr) {
            GetControl()->EndGrab();
        }
        grab_pending = false;
    }
}

void CContent::ChangeScrollModel(frame_rubber* rubber, position a, position b) {
    const CElementRef self(this);
    if (std::abs(b.x - a.x) > SMALLEST_RECTANGLE && std::abs(b.y - a.y) > SMALLEST_RECTANGLE) {
        if (rubber_mode == RUBBER_ZOOM) {
            zoom_to(a, b);
        } else {
            select_between(a, b);
        }
    }
    if (self) {
        RenewView(false);
    }
    if (self) {
        rubber->EndDragging();
        end_grab();
    }
}

void CContent::zoom_to(position a, position b) {
    const CElementRef self(this);
    const tamsel7::rectangle<int> content = GetContentRect();
    SetScale(std::min((content.right - content.left) / std::abs(b.x - a.x),
                      (content.bottom - content.top) / std::abs(b.y - a.y)));
    if (self) {
        SetStartX(std::min(a.x, b.x));
    }
    if (self) {
        SetStartY(std::min(a.y, b.y));
    }
}

// Deliberate: the hit test takes the logical corners for pixels. It finds what the rectangle shows
// where the view begins at 0 and is not scaled.
void CContent::select_between(position a, position b) {
    const tamsel7::rectangle<double> r{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                       std::max(a.y, b.y)};
    const CElementRef self(this);
    NodeSet hits =
        HitNodeTest(to_pixel(r.left), to_pixel(r.top), to_pixel(r.right), to_pixel(r.bottom));
    for (int i = 0; self && i < hits.GetCount(); ++i) {
        const Node node = hits.GetItem(i);
        if (!shows(node)) {
            continue;
        }
        const graph_ptr2<INodeHandler> handler = node.GetHandler();
        if (handler.get() != nullptr) {
            handler->HandleOnSelectRect(node, r);
        }
    }
}

} // namespace nurvex7
