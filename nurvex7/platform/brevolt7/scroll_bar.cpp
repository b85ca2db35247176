#include "nurvex7/platform/brevolt7/scroll_bar.h"

#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cmath>

namespace brevolt7 {

using tamsel7::MouseButton;

namespace {

constexpr int SHORTEST_THUMB = 20;
constexpr int TICKS_BEFORE_REPEAT = 8; ///< 400 ms, so that one press turns one page
constexpr tamsel7::_color TRACK(240, 240, 240);
constexpr tamsel7::_color THUMB(200, 200, 200);
constexpr tamsel7::_color THUMB_HOVERED(170, 170, 170);

} // namespace

CScrollBar::CScrollBar(CVisualElement* box, bool along_x)
    : CVisualElement(box, {THICKNESS, THICKNESS}, Alignment::ALIGN_NONE), horizontal(along_x) {
    take_window_bar(GetControl());
}

void CScrollBar::SetModel(const IScrollModel* shown) {
    model = shown;
}

int CScrollBar::length() const {
    return along(GetBounds().right, GetBounds().bottom);
}

std::pair<int, int> CScrollBar::GetThumb() const {
    const ScrollState now = ScrollState::Of(model, length());
    const double range = now.to - now.from;
    if (!(range > 0)) {
        return {0, length()};
    }
    const double share = std::min(1.0, now.span / range);
    const int size = std::min(
        length(), std::max(SHORTEST_THUMB, static_cast<int>(std::lround(share * length()))));
    const double rest = range - now.span;
    const double at = rest > 0 ? (now.start - now.from) / rest : 0;
    const int first = static_cast<int>(std::lround(at * (length() - size)));
    return {first, first + size};
}

void CScrollBar::UpdateElement() {
    const ScrollState now = ScrollState::Of(model, length());
    if (window_bar) {
        place_window_bar();
        window_bar->SetState(now);
    } else if (!(now == state)) {
        state = now;
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
}

void CScrollBar::DrawContent(tamsel7::IPainter* painter) {
    if (window_bar) {
        return; // it stands on top of this element
    }
    const tamsel7::rectangle<int> bounds = GetBounds();
    painter->SetBrush({TRACK, 1});
    painter->FillRect(0, 0, bounds.right, bounds.bottom);
    const auto [first, behind] = GetThumb();
    painter->SetBrush({hovered || dragging ? THUMB_HOVERED : THUMB, 1});
    if (horizontal) {
        painter->FillRect(first, 2, behind, bounds.bottom - 2);
    } else {
        painter->FillRect(2, first, bounds.right - 2, behind);
    }
}

bool CScrollBar::HandleButtonDown(int x, int y, int /*flags*/, MouseButton button) {
    if (button != MouseButton::LEFT || model == nullptr) {
        return true;
    }
    const int at = along(x, y);
    const auto [first, behind] = GetThumb();
    CaptureMouse();
    if (at >= first && at < behind) {
        dragging = true;
        grip = at - first;
        OnChange(this, UpdateType::UPDATE_REPAINT);
    } else {
        page_to = at;
        ticks = 0;
        StartRepeat(GetControl());
        turn_page();
    }
    return true;
}

bool CScrollBar::HandleMouseMove(int x, int y, int /*flags*/, MouseButton /*button*/) {
    page_to = along(x, y);
    if (dragging) {
        const auto [first, behind] = GetThumb();
        const ScrollState now = ScrollState::Of(model, length());
        const int way = length() - (behind - first);
        const double at =
            way > 0 ? std::clamp((along(x, y) - grip) / static_cast<double>(way), 0.0, 1.0) : 0.0;
        OnScroll(this, now.from + at * (now.to - now.from - now.span));
    }
    return true;
}

bool CScrollBar::HandleButtonUp(int /*x*/, int /*y*/, int /*flags*/, MouseButton button) {
    if (button == MouseButton::LEFT) {
        ReleaseMouse();
        end_press();
    }
    return true;
}

void CScrollBar::HandleCaptureLost() {
    end_press();
}

void CScrollBar::end_press() {
    dragging = false;
    StopRepeat();
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

void CScrollBar::HandleMouseHover(CVisualElement* /*who*/) {
    hovered = true;
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

void CScrollBar::HandleMouseLeave(CVisualElement* /*who*/) {
    hovered = false;
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

// The bar of the window

int CScrollBar::GetThickness() const {
    return window_bar ? GetControl()->GetScrollBarThickness() : THICKNESS;
}

void CScrollBar::ProcessSetControl(IControl* control) {
    StopRepeat();
    take_window_bar(control);
}

void CScrollBar::take_window_bar(IControl* control) {
    window_bar.reset();
    if (control != nullptr) {
        window_bar = control->MakeScrollBar(horizontal, [this](double to) { OnScroll(this, to); });
        show_window_bar();
    }
}

void CScrollBar::ProcessSetVisible(bool /*visible*/) {
    show_window_bar();
}

void CScrollBar::ProcessSetParentVisible(bool visible) {
    in_sight = visible;
    show_window_bar();
}

void CScrollBar::HandleRefreshPos() {
    place_window_bar();
}

void CScrollBar::place_window_bar() {
    if (window_bar) {
        const tamsel7::point<int> corner = ToWindow({0, 0});
        const tamsel7::rectangle<int> bounds = GetBounds();
        window_bar->SetPlace(
            {corner.x, corner.y, corner.x + bounds.right, corner.y + bounds.bottom});
    }
}

void CScrollBar::show_window_bar() {
    if (window_bar) {
        window_bar->SetShown(IsVisible() && in_sight);
    }
}

void CScrollBar::ProcessRepeatOperation() {
    if (++ticks > TICKS_BEFORE_REPEAT) {
        turn_page();
    }
}

void CScrollBar::turn_page() {
    const auto [first, behind] = GetThumb();
    const ScrollState now = ScrollState::Of(model, length());
    const double last = std::max(now.from, now.to - now.span);
    if (page_to < first) {
        OnScroll(this, std::max(now.from, now.start - now.span));
    } else if (page_to >= behind) {
        OnScroll(this, std::min(last, now.start + now.span));
    }
}

} // namespace brevolt7
