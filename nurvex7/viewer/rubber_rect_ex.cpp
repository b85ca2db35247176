#include "nurvex7/viewer/rubber_rect_ex.h"

#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/tamsel7/painter.h"
#include "nurvex7/viewer/pixel.h"

#include <algorithm>
#include <limits>

namespace brevolt7 {

using tamsel7::MouseButton;

template <typename Drawer>
CRubberRectEx<Drawer>::CRubberRectEx(CVisualElement* parent_element)
    : CCentralPart(parent_element, {1, 1}, Alignment::ALIGN_NONE),
      converter(std::make_unique<CBothPosConverter>()) {
    this->drawer_style = 3;
    SetTakesFocus(false); // a mark on its parent is no stop for the tab key
    connect_to_parent();
}

template <typename Drawer>
CRubberRectEx<Drawer>::~CRubberRectEx() = default;

template <typename Drawer>
void CRubberRectEx<Drawer>::connect_to_parent() {
    if (parent != nullptr) {
        parent->OnButtonDown.connect(this, &CRubberRectEx::StartDragging);
        parent->OnBeforeDraw.connect(this, &CRubberRectEx::BeforeDrawProcess);
    }
}

template <typename Drawer>
void CRubberRectEx<Drawer>::ChangeParent(CVisualElement* old) {
    if (old != nullptr) {
        old->OnButtonDown.disconnect(this, &CRubberRectEx::StartDragging);
        old->OnBeforeDraw.disconnect(this, &CRubberRectEx::BeforeDrawProcess);
    }
    connect_to_parent();
}

template <typename Drawer>
auto CRubberRectEx<Drawer>::to_logical(int x, int y) const -> position {
    position p{static_cast<double>(x), static_cast<double>(y)};
    if (parent != nullptr) {
        parent->DP2LP(&p);
    }
    return p;
}

// The frame is drawn on pixels that stay, so they have to be painted anew.
template <typename Drawer>
void CRubberRectEx<Drawer>::invalidate_frame() {
    if (parent == nullptr) {
        return;
    }
    position a{std::min(drawn_start.x, drawn_end.x), std::min(drawn_start.y, drawn_end.y)};
    position b{std::max(drawn_start.x, drawn_end.x), std::max(drawn_start.y, drawn_end.y)};
    parent->LP2DP(&a);
    parent->LP2DP(&b);
    using nurvex7::to_pixel;
    parent->InvalidateRect(
        {to_pixel(a.x - 2), to_pixel(a.y - 2), to_pixel(b.x + 3), to_pixel(b.y + 3)});
}

template <typename Drawer>
void CRubberRectEx<Drawer>::EndDragging() {
    if (active && !first_draw) {
        invalidate_frame();
    }
    ReleaseMouse();
    dragging = false;
    active = false;
    first_draw = true;
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

template <typename Drawer>
void CRubberRectEx<Drawer>::StartDragging(CVisualElement* /*sender*/, int x, int y, int /*flags*/,
                                          MouseButton button) {
    if (!drag_enabled || button != MouseButton::LEFT || parent == nullptr) {
        return;
    }
    converter->ConvertStart(&x, &y, parent->GetContentRect());
    start_px = {x, y};
    const position p = to_logical(x, y);
    drawn_start = cur_start = drawn_end = cur_end = prev_end = p;
    CaptureMouse();
    // Deliberate: the least positive number and not the most negative one. A frame reaches to the
    // left of 0 by scrolling only; there is no such limit for y.
    min_x = std::numeric_limits<double>::min();
    max_x = std::numeric_limits<double>::max();
    dragging = true;
    sig_start(this, p, p);
}

template <typename Drawer>
bool CRubberRectEx<Drawer>::HandleMouseMove(int x, int y, int /*flags*/, MouseButton /*button*/) {
    if (!dragging || parent == nullptr) {
        return false;
    }
    const CElementRef self(this);
    active = true;
    x = limited_x(x, y);
    const tamsel7::rectangle<int> content = parent->GetContentRect();
    int start_x = start_px.x;
    int start_y = start_px.y;
    converter->ConvertStart(&start_x, &start_y, content);
    // The first corner stays at its logical place, unless the converter ties it to the view.
    const position start = to_logical(start_x, start_y);
    converter->ConvertStart(&cur_start.x, &cur_start.y, start.x, start.y);
    const bool moved_view = scroll_to(x, y);
    converter->ConvertCur(&x, &y, content);
    cur_end = to_logical(x, y);
    sig_move(this, drawn_start, cur_end, prev_end);
    if (!self) {
        return false;
    }
    prev_end = cur_end;
    scrolled = moved_view;
    if (scrolled && GetControl() != nullptr) {
        invalidate_window();
    } else {
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
    return false;
}

/// The pointer's x, taken back to the limits of its logical place.
template <typename Drawer>
int CRubberRectEx<Drawer>::limited_x(int x, int y) const {
    position at = to_logical(x, y);
    if (at.x >= min_x && at.x <= max_x) {
        return x;
    }
    at.x = at.x > max_x ? max_x : min_x;
    parent->LP2DP(&at);
    return nurvex7::to_pixel(at.x);
}

/// Scrolls both directions towards a pointer outside; where there is no model, it is kept inside.
template <typename Drawer>
bool CRubberRectEx<Drawer>::scroll_to(int& x, int& y) {
    const tamsel7::rectangle<int> r = parent->GetContentRect();
    bool moved = false;
    if (GetHorzScroll() == nullptr) {
        x = std::max(r.left, std::min(x, r.right));
    } else {
        moved = scroll_towards(GetHorzScroll(), to_logical(r.left, y).x, to_logical(r.right, y).x,
                               to_logical(x, y).x, r.right - r.left);
    }
    if (GetVertScroll() == nullptr) {
        y = std::max(r.top, std::min(y, r.bottom));
    } else {
        moved = scroll_towards(GetVertScroll(), to_logical(x, r.top).y, to_logical(x, r.bottom).y,
                               to_logical(x, y).y, r.bottom - r.top) ||
                moved;
    }
    return moved;
}

/// Scrolls one direction so that `at` comes into the view, as far as the model's range goes.
template <typename Drawer>
bool CRubberRectEx<Drawer>::scroll_towards(IScrollModel* model, double low, double high, double at,
                                           int pixels) {
    const double before = model->GetStart();
    double start = before;
    if (low - at > 0) {
        start -= low - at;
    }
    if (high - at < 0) {
        start -= high - at;
    }
    const auto [length, on_pixels] = model->GetMeasure();
    const double span = on_pixels != 0 ? pixels * (length / on_pixels) : 0;
    start = std::max(model->GetFrom(), std::min(start, model->GetTo() - span));
    if (start == before) {
        return false;
    }
    model->SetStart(start);
    first_draw = !erase_by_redraw;
    return true;
}

template <typename Drawer>
void CRubberRectEx<Drawer>::BeforeDrawProcess(CVisualElement* sender, tamsel7::IPainter* painter) {
    if (!active || parent == nullptr || !scrolled || !erase_by_redraw) {
        return;
    }
    const tamsel7::rectangle<double> area = sender->GetDrawRect(painter);
    painter->SetClipRect(area.left, area.top, area.right, area.bottom, false);
    this->DrawRect(painter, drawn_start.x, drawn_start.y, drawn_end.x, drawn_end.y);
    painter->CancelClip();
}

template <typename Drawer>
void CRubberRectEx<Drawer>::DrawContent(tamsel7::IPainter* painter) {
    if (!active || parent == nullptr) {
        return;
    }
    const tamsel7::rectangle<int> content = parent->GetContentRect();
    painter->SetClipRect(content.left, content.top, content.right, content.bottom, false);
    SetCoordSystem(painter);
    if (scrolled && erase_by_redraw) { // the old frame is erased already
        this->DrawRect(painter, cur_start.x, cur_start.y, cur_end.x, cur_end.y);
    } else {
        this->DrawSelection(painter, drawn_start.x, drawn_start.y, drawn_start.x, drawn_start.y,
                            drawn_end.x, drawn_end.y, cur_end.x, cur_end.y, active, first_draw);
    }
    first_draw = false;
    scrolled = false;
    drawn_end = cur_end;
    drawn_start = cur_start;
    painter->CancelClip();
}

template <typename Drawer>
bool CRubberRectEx<Drawer>::HandleButtonUp(int /*x*/, int /*y*/, int flags,
                                           MouseButton /*button*/) {
    release_flags = flags;
    if (!dragging) {
        return false;
    }
    const CElementRef self(this);
    sig_finish(this, drawn_start, drawn_end);
    if (self) {
        EndDragging();
    }
    return false;
}

template <typename Drawer>
void CRubberRectEx<Drawer>::HandleCaptureLost() {
    if (!dragging) {
        return;
    }
    const CElementRef self(this);
    EndDragging();
    // The press came through the parent, which waits for its release.
    if (self && parent != nullptr) {
        parent->HandleCaptureLost();
    }
}

template class CRubberRectEx<FocusRectDrawer>;

} // namespace brevolt7
