// Presses, releases, moves and the wheel: who gets them.
#include "nurvex7/platform/brevolt7/window_control_inside.h"

#include <cstddef>

namespace brevolt7 {

namespace {

unsigned bit_of(tamsel7::MouseButton button) {
    return 1U << (static_cast<unsigned>(button) & 31U);
}

/// The topmost element at a place. Space: pixels of the element's parent.
CVisualElement* find_inside(CVisualElement* element, const tamsel7::point<int>& at) {
    const tamsel7::rectangle<int> place = element->GetPos();
    const bool single_pixel = place.right - place.left <= 1 && place.bottom - place.top <= 1;
    if (!element->IsVisible() || !element->IsEnabled() || single_pixel || !is_inside(place, at)) {
        return nullptr;
    }
    const tamsel7::point<int> own{at.x - place.left, at.y - place.top};
    const auto& children = element->GetChildren();
    for (std::size_t i = children.size(); i > 0; --i) {
        if (CVisualElement* const found = find_inside(children[i - 1], own)) {
            return found;
        }
    }
    return element;
}

} // namespace

CVisualElement* CWindowControl::Inside::Find(const tamsel7::point<int>& at) const {
    return find_inside(control.root, at);
}

CVisualElement* CWindowControl::Inside::GetReceiver() const {
    if (capture) {
        return capture.Get();
    }
    return pressed ? pressed.Get() : Find(last.at);
}

bool CWindowControl::Inside::Press(const PointerEvent& event, bool double_click) {
    const Running running(*this);
    HideTooltip();
    last = event;
    pointer_inside = true;
    if (dragging) {
        return true;
    }
    if (buttons == 0) {
        pressed = CElementRef(capture ? nullptr : Find(event.at));
        press_at = event.at;
        captured_in_press = false;
        drag_offered = double_click;
    }
    buttons |= bit_of(event.button);
    if (!capture) {
        FocusByPress(pressed.Get());
    }
    if (!running) {
        return true;
    }
    return climb(GetReceiver(), event.at, [&](const CElementRef& e, const auto& at) {
        if (double_click) {
            return settle(e->HandleDoubleClick(at.x, at.y, event.flags, event.button), e,
                          [&](CVisualElement& to) {
                              to.OnDoubleClick(&to, at.x, at.y, event.flags, event.button);
                          });
        }
        return settle(e->HandleButtonDown(at.x, at.y, event.flags, event.button), e,
                      [&](CVisualElement& to) {
                          to.OnButtonDown(&to, at.x, at.y, event.flags, event.button);
                      });
    });
}

bool CWindowControl::Inside::Release(const PointerEvent& event) {
    const Running running(*this);
    last = event;
    buttons &= ~bit_of(event.button);
    if (dragging) {
        return buttons == 0 ? Drop(event.at) : true;
    }
    const bool handled = climb(GetReceiver(), event.at, [&](const CElementRef& e, const auto& at) {
        return settle(
            e->HandleButtonUp(at.x, at.y, event.flags, event.button), e,
            [&](CVisualElement& to) { to.OnButtonUp(&to, at.x, at.y, event.flags, event.button); });
    });
    if (!running || buttons != 0) {
        return handled;
    }
    const CElementRef clicked = pressed;
    pressed = CElementRef();
    if (clicked && !captured_in_press && Find(event.at) == clicked.Get()) {
        climb(clicked.Get(), event.at, [&](const CElementRef& e, const auto& at) {
            return settle(e->HandleClick(at.x, at.y, event.flags, event.button), e,
                          [&](CVisualElement& to) {
                              to.OnClick(&to, at.x, at.y, event.flags, event.button);
                          });
        });
    }
    if (running && IsIdle() && pointer_inside) {
        SetHover(Find(last.at));
    }
    return handled;
}

bool CWindowControl::Inside::Move(const PointerEvent& event) {
    const Running running(*this);
    last = event;
    pointer_inside = true;
    if (!dragging && buttons != 0 && !capture) {
        OfferDrag();
    }
    if (!running) {
        return true;
    }
    if (dragging) {
        return DragTo(event.at);
    }
    if (IsIdle()) {
        SetHover(Find(event.at));
        if (running) {
            TooltipMoved();
        }
    }
    if (!running) {
        return true;
    }
    captured_in_press = captured_in_press || capture;
    return climb(GetReceiver(), event.at, [&](const CElementRef& e, const auto& at) {
        return settle(e->HandleMouseMove(at.x, at.y, event.flags, event.button), e,
                      [&](CVisualElement& to) {
                          to.OnMouseMove(&to, at.x, at.y, event.flags, event.button);
                      });
    });
}

bool CWindowControl::Inside::Wheel(const PointerEvent& event, int distance) {
    const Running running(*this);
    HideTooltip();
    last = event;
    return climb(GetReceiver(), event.at, [&](const CElementRef& e, const auto& at) {
        return settle(e->HandleWheel(at.x, at.y, event.flags, event.button, distance), e,
                      [&](CVisualElement& to) {
                          to.OnWheel(&to, at.x, at.y, event.flags, event.button, distance);
                      });
    });
}

void CWindowControl::Inside::Leave() {
    const Running running(*this);
    pointer_inside = false;
    HideTooltip();
    if (IsIdle()) {
        SetHover(nullptr);
    }
}

/// A menu in the middle of a drag would take the release away that the drag waits for. The button
/// that asks for the menu may still be down.
bool CWindowControl::Inside::ContextMenu(const tamsel7::point<int>& at) {
    const Running running(*this);
    const unsigned others = buttons & ~bit_of(tamsel7::MouseButton::RIGHT);
    if (dragging || capture || others != 0) {
        return false;
    }
    HideTooltip();
    return climb(Find(at), at, [&](const CElementRef& e, const auto& place) {
        return settle(e->HandleContextMenu(place.x, place.y), e,
                      [&](CVisualElement& to) { to.OnContextMenu(&to, place.x, place.y); });
    });
}

void CWindowControl::Inside::SetHover(CVisualElement* element) {
    const CElementRef left = hovered;
    if (left.Get() == element) {
        return;
    }
    const Running running(*this);
    const CElementRef entered(element);
    hovered = entered;
    if (left) {
        left->HandleMouseLeave(left.Get());
        if (left && !left->EmitsMouseLeave()) {
            left->OnMouseLeave(left.Get());
        }
        climb(left ? left->parent : nullptr, {}, [&](const CElementRef& e, auto) {
            e->HandleChildrenMouseLeave(left.Get());
            return false;
        });
    }
    if (entered) {
        entered->HandleMouseHover(entered.Get());
        if (entered) {
            entered->OnMouseHover(entered.Get());
        }
        climb(entered ? entered->parent : nullptr, {}, [&](const CElementRef& e, auto) {
            e->HandleChildrenMouseHover(entered.Get());
            return false;
        });
    }
    if (running && entered) {
        control.CursorChanged(entered.Get());
    }
}

/// Whatever was going on is over without its release.
void CWindowControl::Inside::LoseCapture() {
    const Running running(*this);
    const CElementRef first = capture;
    const CElementRef second = pressed;
    capture = CElementRef();
    pressed = CElementRef();
    buttons = 0;
    grab_asked = false;
    CancelDrag();
    if (first) {
        first->HandleCaptureLost();
    }
    if (second && second.Get() != first.Get()) {
        second->HandleCaptureLost();
    }
}

void CWindowControl::Inside::UpdateGrab() {
    const bool wanted = grab_asked || static_cast<bool>(capture);
    if (running == 0 && wanted != grabbed) {
        grabbed = wanted;
        window.GrabPointer(wanted);
    }
}

void CWindowControl::Inside::ForgetElement(CVisualElement* element) {
    const auto inside_of = [element](const CElementRef& e) { return e && e->IsInside(element); };
    // Holders inside a dying element are not told: their surroundings are half gone already.
    const CElementRef loser = inside_of(capture) && CElementRef(element) ? capture : CElementRef();
    const CElementRef presser =
        inside_of(pressed) && CElementRef(element) ? pressed : CElementRef();
    const bool focus_goes = inside_of(focus) && CElementRef(element);
    for (CElementRef* const held : {&capture, &pressed, &hovered, &drag_target}) {
        if (inside_of(*held)) {
            *held = CElementRef();
        }
    }
    if (tooltip_is_up && (!tooltip_owner || inside_of(tooltip_owner))) {
        HideTooltip();
    }
    if (!drag_source || inside_of(drag_source)) {
        drag_source = CElementRef();
        CancelDrag();
    }
    UpdateGrab();
    const Running running_event(*this);
    if (loser) {
        loser->HandleCaptureLost();
    }
    if (presser && presser.Get() != loser.Get()) {
        presser->HandleCaptureLost();
    }
    if (running_event && focus_goes) {
        SetFocus(nullptr, /*by_tab=*/false);
    } else if (running_event && inside_of(focus)) {
        focus = CElementRef();
    }
}

} // namespace brevolt7
