// An element in its tree: parents and children, places, visibility.
#include "nurvex7/platform/brevolt7/visual_element.h"

#include "nurvex7/platform/brevolt7/element_ref.h"

#include <algorithm>
#include <cstddef>

namespace brevolt7 {

namespace {

tamsel7::rectangle<int> normal(const tamsel7::rectangle<int>& r) {
    return {r.left, r.top, std::max(r.left, r.right), std::max(r.top, r.bottom)};
}

/// Takes the strip of an aligned child off what is left of the room.
tamsel7::rectangle<int> cut_strip(tamsel7::rectangle<int>& room, Alignment side, int width,
                                  int height) {
    tamsel7::rectangle<int> strip = room;
    switch (side) {
    case Alignment::ALIGN_TOP:
        room.top = strip.bottom = std::min(room.bottom, room.top + height);
        break;
    case Alignment::ALIGN_BOTTOM:
        room.bottom = strip.top = std::max(room.top, room.bottom - height);
        break;
    case Alignment::ALIGN_LEFT:
        room.left = strip.right = std::min(room.right, room.left + width);
        break;
    case Alignment::ALIGN_RIGHT:
        room.right = strip.left = std::max(room.left, room.right - width);
        break;
    case Alignment::ALIGN_FILL:
    case Alignment::ALIGN_NONE:
        break;
    }
    return strip;
}

} // namespace

CVisualElement::CVisualElement(CVisualElement* given_parent, const tamsel7::size<int>& size,
                               Alignment given_alignment)
    : parent(nullptr), place{0, 0, std::max(0, size.width), std::max(0, size.height)}, wanted{size},
      alignment(given_alignment), life(std::make_shared<char>()) {
    dirty.Add(GetBounds());
    if (given_parent != nullptr) {
        control = given_parent->control;
        link_to(given_parent);
    }
}

CVisualElement::~CVisualElement() {
    // From here on nobody who holds a reference reaches this element, whose subclass has gone.
    life.reset();
    leave_control();
    DeleteChildren();
    unlink();
}

void CVisualElement::DeleteChildren() {
    while (!children.empty()) {
        delete children.back();
    }
}

void CVisualElement::link_to(CVisualElement* to) {
    const CElementRef self(this);
    parent = to;
    to->children.push_back(this);
    to->AddNewChild(this);
    if (self && parent == to && alignment != Alignment::ALIGN_NONE) {
        to->rearrange(this);
    }
    if (self) {
        note_change();
    }
}

void CVisualElement::unlink() {
    if (parent == nullptr) {
        return;
    }
    for (CVisualElement* e = parent; e != nullptr; e = e->parent) {
        if (e->focus_target == this) {
            e->focus_target = nullptr;
        }
    }
    CVisualElement* const left = parent;
    parent = nullptr;
    std::erase(left->children, this);
    // A parent that is going takes its children along and shows nothing more.
    if (visible && left->life != nullptr) {
        left->InvalidateRect(place);
        if (alignment != Alignment::ALIGN_NONE) {
            left->rearrange(nullptr);
        }
    }
}

void CVisualElement::leave_control() {
    if (control != nullptr) {
        control->ElementGone(this);
    }
}

void CVisualElement::SetParent(CVisualElement* new_parent) {
    if (new_parent == parent) {
        return;
    }
    const CElementRef self(this);
    const CElementRef to(new_parent);
    CVisualElement* const old = parent;
    const CElementRef from(old);
    IControl* const new_control = new_parent != nullptr ? new_parent->control : nullptr;
    leave_control();
    if (self) {
        unlink();
    }
    if (self && new_control != control) {
        attach(new_control);
    }
    // Whoever hears of this may delete the element or the parent that it was to have.
    if (self && to) {
        link_to(new_parent);
    } else if (self && control != nullptr) {
        attach(nullptr);
    }
    if (self && parent != nullptr) {
        Invalidate();
    }
    if (self) {
        ChangeParent(from ? old : nullptr);
    }
}

void CVisualElement::attach(IControl* to) {
    const CElementRef self(this);
    set_control(to);
    if (self) {
        after_set_control();
    }
}

void CVisualElement::set_control(IControl* to) {
    const CElementRef self(this);
    control = to;
    ProcessSetControl(to);
    for (std::size_t i = 0; self && i < children.size(); ++i) {
        children[i]->set_control(to);
    }
}

void CVisualElement::after_set_control() {
    const CElementRef self(this);
    AfterSetControl();
    for (std::size_t i = 0; self && i < children.size(); ++i) {
        children[i]->after_set_control();
    }
}

bool CVisualElement::IsInside(const CVisualElement* element) const {
    const CVisualElement* e = this;
    while (e != nullptr && e != element) {
        e = e->parent;
    }
    return e != nullptr;
}

// Places

tamsel7::rectangle<int> CVisualElement::GetBounds() const {
    return {0, 0, place.right - place.left, place.bottom - place.top};
}

tamsel7::rectangle<int> CVisualElement::GetContentRect() const {
    return GetBounds();
}

tamsel7::point<int> CVisualElement::ToWindow(const tamsel7::point<int>& p) const {
    tamsel7::point<int> result = p;
    for (const CVisualElement* e = this; e != nullptr; e = e->parent) {
        result = {result.x + e->place.left, result.y + e->place.top};
    }
    return result;
}

tamsel7::point<int> CVisualElement::FromWindow(const tamsel7::point<int>& p) const {
    const tamsel7::point<int> corner = ToWindow({0, 0});
    return {p.x - corner.x, p.y - corner.y};
}

void CVisualElement::SetSize(const tamsel7::size<int>& size, bool repaint) {
    const CElementRef self(this);
    wanted = size;
    SetPos({place.left, place.top, place.left + size.width, place.top + size.height}, repaint);
    if (self && parent != nullptr && alignment != Alignment::ALIGN_NONE) {
        parent->rearrange(this);
    }
}

void CVisualElement::SetPos(const tamsel7::rectangle<int>& new_place, bool repaint) {
    const tamsel7::rectangle<int> old = place;
    const tamsel7::rectangle<int> bounds = GetBounds();
    place = normal(new_place);
    if (alignment == Alignment::ALIGN_NONE) {
        wanted = {place.right - place.left, place.bottom - place.top};
    }
    if (place == old) {
        if (repaint) {
            Invalidate();
        }
        return;
    }
    if (parent != nullptr && visible && !(contains(place, old) && !IsTransparent())) {
        parent->InvalidateRect(old);
    }
    dirty.Clear();
    Invalidate();
    const CElementRef self(this);
    if (!(GetBounds() == bounds)) {
        rearrange(nullptr);
    }
    if (self) {
        refresh_pos();
    }
}

void CVisualElement::refresh_pos() {
    const CElementRef self(this);
    HandleRefreshPos();
    for (std::size_t i = 0; self && i < children.size(); ++i) {
        children[i]->refresh_pos();
    }
}

void CVisualElement::SetAlignment(Alignment new_alignment) {
    if (alignment != new_alignment) {
        alignment = new_alignment;
        if (parent != nullptr) {
            parent->rearrange(this);
        }
    }
}

void CVisualElement::rearrange(CVisualElement* who) {
    CVisualElement* asking = who;
    ProcessRearrange(&asking);
}

void CVisualElement::ProcessRearrange(CVisualElement** who) {
    tamsel7::rectangle<int> room = GetContentRect();
    const CElementRef self(this);
    // A child may bring or remove others when it is placed, so the list is read afresh.
    for (std::size_t i = 0; self && i < children.size(); ++i) {
        CVisualElement* const child = children[i];
        if (child->alignment != Alignment::ALIGN_NONE && child->visible) {
            const auto [width, height] = child->wanted;
            child->SetPos(
                cut_strip(room, child->alignment, std::max(0, width), std::max(0, height)), false);
        }
    }
    *who = nullptr;
}

// State

void CVisualElement::SetVisible(bool shown) {
    if (visible == shown) {
        return;
    }
    visible = shown;
    const CElementRef self(this);
    if (!shown) {
        leave_control();
    }
    if (parent != nullptr) {
        parent->InvalidateRect(place);
        if (alignment != Alignment::ALIGN_NONE) {
            parent->rearrange(this);
        }
    }
    if (self) {
        Invalidate();
        ProcessSetVisible(shown);
    }
    if (self) {
        notify_visible(shown);
    }
}

void CVisualElement::notify_visible(bool shown) {
    const CElementRef self(this);
    for (std::size_t i = 0; self && i < children.size(); ++i) {
        const CElementRef child(children[i]);
        child->ProcessSetParentVisible(shown);
        if (child && child->visible) {
            child->notify_visible(shown);
        }
    }
}

void CVisualElement::SetEnabled(bool on) {
    if (enabled != on) {
        enabled = on;
        const CElementRef self(this);
        if (!on) {
            leave_control();
        }
        if (self) {
            AttributeChanged();
        }
    }
}

void CVisualElement::SetTakesFocus(bool takes) {
    takes_focus = takes;
}

void CVisualElement::SetBkColor(const tamsel7::_color& color) {
    bk_color = color;
    AttributeChanged();
}

void CVisualElement::SetFgColor(const tamsel7::_color& color) {
    fg_color = color;
    AttributeChanged();
}

void CVisualElement::SetHelpId(const std::string& id) {
    help_id = id;
}

void CVisualElement::SetCursor(CursorShape shape) {
    own_cursor = true;
    cursor = shape;
    if (control != nullptr) {
        control->CursorChanged(this);
    }
}

CursorShape CVisualElement::GetCursor() const {
    const CVisualElement* e = this;
    while (!e->own_cursor && e->parent != nullptr) {
        e = e->parent;
    }
    return e->cursor;
}

} // namespace brevolt7
