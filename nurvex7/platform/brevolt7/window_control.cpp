// The control as its host and its elements see it.
#include "nurvex7/platform/brevolt7/window_control.h"

#include "nurvex7/platform/brevolt7/invalid_region.h"
#include "nurvex7/platform/brevolt7/paint_pass.h"
#include "nurvex7/platform/brevolt7/window_control_inside.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace brevolt7 {

namespace {

/// Shows the background where no other element does.
class RootElement final : public CVisualElement {
public:
    RootElement() : CVisualElement(nullptr, {0, 0}, Alignment::ALIGN_NONE) {}

    bool IsFullRepainted() const override { return false; }

    void DrawContent(tamsel7::IPainter* painter) override {
        const CInvalidRegion region(GetDrawRect(painter), GetDrawValidRect(painter));
        painter->SetBrush({GetBkColor(), 1});
        for (int i = 0; i < region.count; ++i) {
            const tamsel7::rectangle<double> piece = region[i];
            painter->FillRect(piece.left, piece.top, piece.right, piece.bottom);
        }
    }
};

/// Calls every element of a tree, parents first, as long as it lives.
template <typename Call>
void for_each_element(CVisualElement* element, Call call) {
    const CElementRef self(element);
    call(element);
    for (std::size_t i = 0; self && i < element->GetChildren().size(); ++i) {
        for_each_element(element->GetChildren()[i], call);
    }
}

/// Invalidates what the elements show of an area. Space: pixels of the element's parent.
void invalidate_inside(CVisualElement* element, const pixel_rect& area) {
    const pixel_rect place = element->GetPos();
    const pixel_rect part = intersection(area, place);
    if (!element->IsVisible() || is_empty(part)) {
        return;
    }
    const pixel_rect own = moved(part, -place.left, -place.top);
    element->InvalidateRect(own);
    for (CVisualElement* const child : element->GetChildren()) {
        invalidate_inside(child, own);
    }
}

} // namespace

CWindowControl::CWindowControl(IWindow& window)
    : root(new RootElement), inside(std::make_unique<Inside>(*this, window)) {
    root->attach(this);
}

CWindowControl::~CWindowControl() {
    for_each_element(root, [](CVisualElement* e) { e->HandleControlDestroy(); });
    inside->HideTooltip();
    inside->life.reset();
    delete root;
    if (inside->repeat_timer) {
        inside->window.StopTimer(TIMER_REPEAT);
    }
    if (inside->grabbed) {
        inside->window.GrabPointer(false);
    }
}

// Repainting

void CWindowControl::ProcessResize(const tamsel7::size<int>& client) {
    inside->client = {std::max(0, client.width), std::max(0, client.height)};
    root->SetPos({0, 0, inside->client.width, inside->client.height}, true);
}

tamsel7::rectangle<int> CWindowControl::ProcessPaint(tamsel7::IPainter* painter) {
    Inside& in = *inside;
    // A pass from within a pass, out of an event loop that an element runs: the outer one paints.
    if (in.painting) {
        return {};
    }
    const Inside::Running running(in);
    {
        // What UpdateElement changes is painted right below, without another pass.
        const Inside::Mark scheduled(in, in.scheduled);
        in.InvalidateDragItem();
        PaintPass::Update(root);
    }
    if (!running) {
        return {};
    }
    PaintPass pass(*painter);
    {
        const Inside::Mark painting(in, in.painting);
        pass.Paint(root, GetClientRect());
        if (!running) {
            return pass.GetTouched();
        }
        in.DrawDragItem(*painter);
    }
    const pixel_rect touched = united(united(pass.GetTouched(), in.scrolled), in.drag_item_shown);
    in.scrolled = {};
    return intersection(touched, GetClientRect());
}

void CWindowControl::ScheduleRepaint() {
    if (!inside->scheduled) {
        inside->scheduled = true;
        inside->window.ScheduleRepaint();
    }
}

void CWindowControl::InvalidateRect(int left, int top, int right, int bottom, bool /*erase*/) {
    invalidate_inside(root, {left, top, right, bottom});
}

bool CWindowControl::ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) {
    if (inside->painting || !inside->window.ScrollPixels(area, dx, dy)) {
        return false;
    }
    inside->scrolled = united(inside->scrolled, area);
    ScheduleRepaint();
    return true;
}

void CWindowControl::ProcessSysColorsChange() {
    for_each_element(root, [](CVisualElement* e) { e->SysColorsChanged(); });
    const pixel_rect client = GetClientRect();
    InvalidateRect(client.left, client.top, client.right, client.bottom, false);
}

// What the window lends

tamsel7::IPainter* CWindowControl::GetPainter() {
    return inside->window.GetPainter();
}

tamsel7::rectangle<int> CWindowControl::GetClientRect() const {
    return {0, 0, inside->client.width, inside->client.height};
}

void CWindowControl::SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) {
    inside->window.SetClipboard(text, intersection(area, GetClientRect()));
}

std::unique_ptr<IWindowScrollBar> CWindowControl::MakeScrollBar(bool horizontal,
                                                                std::function<void(double)> moved) {
    return inside->window.MakeScrollBar(horizontal, std::move(moved));
}

int CWindowControl::GetScrollBarThickness() const {
    return inside->window.GetScrollBarThickness();
}

// Timers

tamsel7::CTimer& CWindowControl::GetRepeatTimer() {
    return inside->repeat;
}

void CWindowControl::RepeatTimerChanged() {
    const bool wanted = inside->repeat.HasSubscribers();
    if (wanted == inside->repeat_timer) {
        return;
    }
    inside->repeat_timer = wanted;
    if (wanted) {
        inside->window.StartTimer(TIMER_REPEAT, inside->repeat.GetInterval());
    } else {
        inside->window.StopTimer(TIMER_REPEAT);
    }
}

void CWindowControl::ProcessTimer(int id) {
    const Inside::Running running(*inside);
    if (id == TIMER_TOOLTIP) {
        inside->AskTooltip();
    } else if (id == TIMER_REPEAT) {
        inside->repeat.Tick();
        if (running) {
            RepeatTimerChanged();
        }
    }
}

// Events

bool CWindowControl::ProcessMouseMove(int x, int y, int flags, tamsel7::MouseButton button) {
    return inside->Move({{x, y}, flags, button});
}

bool CWindowControl::ProcessButtonDown(int x, int y, int flags, tamsel7::MouseButton button) {
    return inside->Press({{x, y}, flags, button}, /*double_click=*/false);
}

bool CWindowControl::ProcessDoubleClick(int x, int y, int flags, tamsel7::MouseButton button) {
    return inside->Press({{x, y}, flags, button}, /*double_click=*/true);
}

bool CWindowControl::ProcessButtonUp(int x, int y, int flags, tamsel7::MouseButton button) {
    return inside->Release({{x, y}, flags, button});
}

bool CWindowControl::ProcessWheel(int x, int y, int flags, tamsel7::MouseButton button,
                                  int distance) {
    return inside->Wheel({{x, y}, flags, button}, distance);
}

void CWindowControl::ProcessMouseLeave() {
    inside->Leave();
}

void CWindowControl::ProcessCaptureLost() {
    inside->LoseCapture();
}

bool CWindowControl::ProcessContextMenu(int x, int y) {
    return inside->ContextMenu({x, y});
}

bool CWindowControl::ProcessKeyDown(int flags, int key) {
    return inside->KeyDown(flags, key);
}

bool CWindowControl::ProcessKeyUp(int flags, int key) {
    const Inside::Running running(*inside);
    return climb(GetFocus() != nullptr ? GetFocus() : root, {}, [&](const CElementRef& e, auto) {
        return settle(e->HandleKeyUp(flags, key), e,
                      [&](CVisualElement& to) { to.OnKeyUp(&to, flags, key); });
    });
}

bool CWindowControl::ProcessChar(char byte) {
    const Inside::Running running(*inside);
    return climb(GetFocus() != nullptr ? GetFocus() : root, {}, [&](const CElementRef& e, auto) {
        return settle(e->HandleChar(byte), e, [&](CVisualElement& to) { to.OnChar(&to, byte); });
    });
}

void CWindowControl::ProcessFocusChange(bool focused) {
    if (inside->focused == focused) {
        return;
    }
    const Inside::Running running(*inside);
    inside->focused = focused;
    for_each_element(root, [&](CVisualElement* e) { e->HandleControlChangeFocus(focused); });
    if (running && !focused) {
        inside->HideTooltip();
    }
}

bool CWindowControl::ProcessDragOver(int x, int y, DragInfo& info) {
    const Inside::Running running(*inside);
    bool accepted = false;
    climb(inside->Find({x, y}), {x, y}, [&](const CElementRef& e, const auto& at) {
        accepted = e->HandleDragOver(nullptr, at.x, at.y, info);
        return accepted;
    });
    return accepted;
}

bool CWindowControl::ProcessDrop(int x, int y, DragInfo& info) {
    const Inside::Running running(*inside);
    bool taken = false;
    climb(inside->Find({x, y}), {x, y}, [&](const CElementRef& e, const auto& at) {
        taken = e->HandleDragOver(nullptr, at.x, at.y, info);
        if (taken && e) {
            e->HandleDropDone(nullptr, at.x, at.y, info);
        }
        return taken;
    });
    return taken;
}

// Capture and focus

void CWindowControl::StartGrab() {
    inside->grab_asked = true;
    inside->UpdateGrab();
}

void CWindowControl::EndGrab() {
    inside->grab_asked = false;
    inside->UpdateGrab();
}

void CWindowControl::SetCapture(CVisualElement* element) {
    const CElementRef loser = inside->capture;
    inside->capture = CElementRef(element);
    inside->UpdateGrab();
    if (loser && loser.Get() != element) {
        loser->HandleCaptureLost();
    }
}

void CWindowControl::ReleaseCapture(CVisualElement* element) {
    if (element != nullptr && inside->capture.Get() == element) {
        inside->capture = CElementRef();
        inside->UpdateGrab();
    }
}

CVisualElement* CWindowControl::GetCapture() const {
    return inside->capture.Get();
}

tamsel7::point<int> CWindowControl::GetPointer() const {
    return inside->last.at;
}

void CWindowControl::SetFocus(CVisualElement* element) {
    inside->SetFocus(element, /*by_tab=*/false);
}

CVisualElement* CWindowControl::GetFocus() const {
    return inside->focus.Get();
}

bool CWindowControl::IsFocused() const {
    return inside->focused;
}

void CWindowControl::CursorChanged(CVisualElement* element) {
    CVisualElement* const over = inside->hovered.Get();
    if (over != nullptr && over->IsInside(element) && over->GetCursor() != inside->shown_cursor) {
        inside->shown_cursor = over->GetCursor();
        inside->window.SetCursor(inside->shown_cursor);
    }
}

void CWindowControl::ElementGone(CVisualElement* element) {
    inside->ForgetElement(element);
}

} // namespace brevolt7
