#include "nurvex7/viewer/rubber_rect.h"

#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>

namespace brevolt7 {

using tamsel7::MouseButton;

template <typename Drawer>
CRubberRect<Drawer>::CRubberRect(CVisualElement* parent_element)
    : CVisualElement(parent_element, {1, 1}, Alignment::ALIGN_NONE),
      converter(std::make_unique<CBothPosConverter>()) {
    if (parent != nullptr) {
        parent->OnButtonDown.connect(this, &CRubberRect::StartDragging);
    }
}

template <typename Drawer>
CRubberRect<Drawer>::~CRubberRect() = default;

template <typename Drawer>
void CRubberRect<Drawer>::ChangeParent(CVisualElement* old) {
    if (old != nullptr) {
        old->OnButtonDown.disconnect(this, &CRubberRect::StartDragging);
    }
    if (parent != nullptr) {
        parent->OnButtonDown.connect(this, &CRubberRect::StartDragging);
    }
}

template <typename Drawer>
auto CRubberRect<Drawer>::to_logical(const tamsel7::point<int>& pixel) const -> position {
    position p{static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
    if (parent != nullptr) {
        parent->DP2LP(&p);
    }
    return p;
}

template <typename Drawer>
void CRubberRect<Drawer>::EndDragging() {
    ReleaseMouse();
    dragging = false;
    active = false;
    first_draw = true;
}

template <typename Drawer>
void CRubberRect<Drawer>::StartDragging(CVisualElement* /*sender*/, int x, int y, int /*flags*/,
                                        MouseButton button) {
    if (!drag_enabled || button != MouseButton::LEFT || parent == nullptr) {
        return;
    }
    converter->ConvertStart(&x, &y, parent->GetContentRect());
    start_px = drawn_px = cur_px = prev_px = {x, y};
    const position p = to_logical(start_px);
    CaptureMouse();
    dragging = true;
    sig_start(this, p, p);
}

template <typename Drawer>
bool CRubberRect<Drawer>::HandleMouseMove(int x, int y, int /*flags*/, MouseButton /*button*/) {
    if (!dragging || parent == nullptr) {
        return false;
    }
    const CElementRef self(this);
    active = true;
    const tamsel7::rectangle<int> content = parent->GetContentRect();
    if (clamp_to_parent) {
        x = std::max(content.left, std::min(x, content.right));
        y = std::max(content.top, std::min(y, content.bottom));
    }
    converter->ConvertCur(&x, &y, content);
    cur_px = {x, y};
    sig_move(this, to_logical(start_px), to_logical(cur_px), to_logical(prev_px));
    if (self) {
        prev_px = cur_px;
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
    return false;
}

/// There is no picture; what counts is that the place has been painted.
template <typename Drawer>
void CRubberRect<Drawer>::DrawContent(tamsel7::IPainter* painter) {
    if (!active || parent == nullptr) {
        return;
    }
    const tamsel7::rectangle<int> content = parent->GetContentRect();
    painter->SetClipRect(content.left, content.top, content.right, content.bottom, false);
    first_draw = false;
    drawn_px = cur_px;
    painter->CancelClip();
}

template <typename Drawer>
bool CRubberRect<Drawer>::HandleButtonUp(int /*x*/, int /*y*/, int /*flags*/,
                                         MouseButton /*button*/) {
    const CElementRef self(this);
    if (active) {
        sig_finish(this, to_logical(start_px), to_logical(drawn_px));
    }
    if (self) {
        EndDragging();
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
    return false;
}

template <typename Drawer>
void CRubberRect<Drawer>::HandleCaptureLost() {
    if (dragging) {
        EndDragging();
        sig_cancel(this);
    }
}

template class CRubberRect<DummyDrawer>;

} // namespace brevolt7
