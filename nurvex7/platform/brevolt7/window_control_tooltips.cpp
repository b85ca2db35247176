// Tooltips: when the pointer rests, who answers, and how long the answer stays.
#include "nurvex7/platform/brevolt7/window_control_inside.h"

namespace brevolt7 {

namespace {

/// The event as the window sees it.
tamsel7::CTooltipEvent in_window(const tamsel7::CTooltipEvent& event, const CVisualElement& owner) {
    tamsel7::CTooltipEvent result = event;
    const tamsel7::point<int> corner = owner.ToWindow({0, 0});
    result.pos = owner.ToWindow(event.pos);
    result.hot_rect = moved(event.hot_rect, corner.x, corner.y);
    result.second_rect = moved(event.second_rect, corner.x, corner.y);
    return result;
}

} // namespace

/// The pointer moved without a button: what is up stays inside its hot area, what is not waits
/// until the pointer rests.
void CWindowControl::Inside::TooltipMoved() {
    if (tooltip_owner) {
        const bool left = !hovered || !hovered->IsInside(tooltip_owner.Get());
        const bool cool = !is_empty(tooltip.hot_rect) &&
                          !is_inside(tooltip.hot_rect, tooltip_owner->FromWindow(last.at));
        if (!left && !cool) {
            TrackTooltip();
            return;
        }
        HideTooltip();
    }
    if (control.tooltip_delay > 0) {
        tooltip_timer = true;
        window.StartTimer(TIMER_TOOLTIP, control.tooltip_delay);
    }
}

void CWindowControl::Inside::AskTooltip() {
    if (tooltip_timer) {
        tooltip_timer = false;
        window.StopTimer(TIMER_TOOLTIP);
    }
    if (!IsIdle() || dragging || tooltip_owner || !pointer_inside) {
        return;
    }
    const Running running_event(*this);
    tamsel7::CTooltipEvent event;
    CElementRef owner;
    climb(Find(last.at), last.at, [&](const CElementRef& e, const auto& at) {
        event = {};
        event.pos = at;
        const bool handled = settle(e->HandleOnTooltip(&event), e,
                                    [&](CVisualElement& to) { to.OnTooltip(&to, &event); });
        owner = e;
        return handled || !event.text.empty();
    });
    if (!running_event || !owner || event.text.empty()) {
        return;
    }
    event.visible = true;
    tooltip = event;
    tooltip_is_up = true;
    tooltip_owner = owner;
    window.ShowTooltip(in_window(event, *owner.Get()));
}

void CWindowControl::Inside::TrackTooltip() {
    const Running running_event(*this);
    const CElementRef owner = tooltip_owner;
    tamsel7::CTooltipEvent event = tooltip;
    event.pos = owner->FromWindow(last.at);
    settle(owner->HandleOnTooltipTrack(&event), owner,
           [&](CVisualElement& to) { to.OnTooltipTrack(&to, &event); });
    if (!running_event || !owner || tooltip_owner.Get() != owner.Get()) {
        return;
    }
    const bool changed = event.text != tooltip.text;
    tooltip = event;
    if (event.text.empty() || !event.visible) {
        HideTooltip();
    } else if (changed) {
        window.ShowTooltip(in_window(event, *owner.Get()));
    }
}

void CWindowControl::Inside::HideTooltip() {
    if (tooltip_timer) {
        tooltip_timer = false;
        window.StopTimer(TIMER_TOOLTIP);
    }
    if (tooltip_is_up) {
        tooltip_is_up = false;
        tooltip = {};
        tooltip_owner = CElementRef();
        window.HideTooltip();
    }
}

} // namespace brevolt7
