// The focus, and what keys do.
#include "nurvex7/platform/brevolt7/window_control_inside.h"

namespace brevolt7 {

namespace {

/// More targets than that are a ring.
constexpr int MOST_FOCUS_TARGETS = 32;

CVisualElement* end_of_targets(CVisualElement* element) {
    for (int i = 0; i < MOST_FOCUS_TARGETS && element->focus_target != nullptr; ++i) {
        element = element->focus_target;
    }
    return element;
}

void tell_parents(const CElementRef& child, const CElementRef& other, bool gained) {
    climb(child ? child->parent : nullptr, {}, [&](const CElementRef& e, auto) {
        e->HandleChildFocusChanged(child.Get(), other.Get(), gained);
        return false;
    });
}

} // namespace

void CWindowControl::Inside::SetFocus(CVisualElement* element, bool by_tab) {
    CVisualElement* first = element;
    CVisualElement* chosen = element != nullptr ? end_of_targets(element) : nullptr;
    if (chosen != nullptr && !chosen->TakesFocus()) {
        if (CVisualElement* const inner = chosen->GetFirstTabElement()) {
            first = chosen = inner;
        }
    }
    if (chosen == focus.Get()) {
        return;
    }
    const Running running_event(*this);
    const CElementRef before = focus;
    const CElementRef after(chosen);
    const CElementRef told(first);
    const int change = ++focus_changes;
    focus = CElementRef();
    if (before) {
        before->HandleLostFocus(chosen);
        tell_parents(before, after, /*gained=*/false);
    }
    // Who was told may have moved the focus on, or deleted everything.
    if (!running_event || focus_changes != change || !after || !told) {
        return;
    }
    focus = after;
    if (!focused) {
        window.TakeFocus();
    }
    told->HandleGetFocus(before.Get(), by_tab);
    tell_parents(after, before, /*gained=*/true);
}

void CWindowControl::Inside::FocusByPress(CVisualElement* element) {
    while (element != nullptr && !element->TakesFocus() && element->focus_target == nullptr) {
        element = element->parent;
    }
    if (element != nullptr) {
        SetFocus(element, /*by_tab=*/false);
    }
}

bool CWindowControl::Inside::Traverse(bool backwards) {
    CVisualElement* const root = control.root;
    CVisualElement* const current = focus.Get();
    CVisualElement* next = nullptr;
    if (current != nullptr) {
        next = backwards ? root->GetPrevTabElement(current) : root->GetNextTabElement(current);
    }
    if (next == nullptr) {
        next = backwards ? root->GetLastTabElement() : root->GetFirstTabElement();
    }
    if (next == nullptr || next == current) {
        return false;
    }
    SetFocus(next, /*by_tab=*/true);
    return true;
}

bool CWindowControl::Inside::KeyDown(int flags, int key) {
    const Running running_event(*this);
    if (dragging && key == KEY_ESCAPE) {
        CancelDrag();
        return true;
    }
    HideTooltip();
    CVisualElement* const from = focus ? focus.Get() : control.root;
    const bool handled = climb(from, {}, [&](const CElementRef& e, auto) {
        return settle(e->HandleKeyDown(flags, key), e,
                      [&](CVisualElement& to) { to.OnKeyDown(&to, flags, key); });
    });
    if (handled || !running_event) {
        return true;
    }
    const bool copies = (flags & FLAG_CONTROL) != 0 && (key == KEY_C || key == KEY_INSERT);
    if (key == KEY_TAB && (flags & (FLAG_CONTROL | FLAG_ALT)) == 0) {
        return Traverse((flags & FLAG_SHIFT) != 0);
    }
    if (copies && focus && focus->IsCopyToClipboardEnabled()) {
        focus->HandleCopyToClipboard();
        return true;
    }
    if (key == KEY_MENU && focus) {
        const tamsel7::rectangle<int> bounds = focus->GetBounds();
        return ContextMenu(focus->ToWindow({bounds.right / 2, bounds.bottom / 2}));
    }
    return false;
}

} // namespace brevolt7
