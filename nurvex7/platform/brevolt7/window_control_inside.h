#pragma once

#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/brevolt7/drag_and_drop.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/window_control.h"

#include <memory>

namespace brevolt7 {

/// At which place of the window an event is, and with what.
struct PointerEvent {
    tamsel7::point<int> at;
    int flags = 0;
    tamsel7::MouseButton button = tamsel7::MouseButton::NONE;
};

/// Calls an element, and then its parents, until one handles the event. `call` is told the element
/// and the place in its pixels, and gives true where the event is settled. An element that dies
/// settles it too. Nothing is touched afterwards but the elements themselves.
template <typename Call>
bool climb(CVisualElement* from, const tamsel7::point<int>& at, Call call) {
    CElementRef element(from);
    while (element) {
        const tamsel7::point<int> place = element->FromWindow(at);
        if (call(element, place) || !element) {
            return true;
        }
        element = element->parent;
    }
    return false;
}

/// The rest of one step of a climb: an operation that gave false is followed by the signal.
template <typename Emit>
bool settle(bool handled, const CElementRef& element, Emit emit) {
    if (!handled && element) {
        emit(*element.Get());
    }
    return handled;
}

/// The state of a control between events, by concern.
class CWindowControl::Inside {
public:
    Inside(CWindowControl& owner, IWindow& host) : control(owner), window(host) {}

    /// Marks an event that is on the stack. The pointer is grabbed or let go at the end of the
    /// outermost one: elements release and capture the mouse several times in a press.
    class Running {
    public:
        explicit Running(Inside& given) : inside(given), life(given.life) { ++inside.running; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() {
            if (!life.expired() && --inside.running == 0) {
                inside.UpdateGrab();
            }
        }
        /// False once a receiver has destroyed the control: then nothing of it may be touched.
        explicit operator bool() const { return !life.expired(); }

    private:
        Inside& inside;
        std::weak_ptr<void> life;
    };

    /// Sets a flag of the control for the length of a scope, which the control may not live to see
    /// the end of.
    class Mark {
    public:
        Mark(Inside& inside, bool& marked) : flag(marked), life(inside.life) { flag = true; }
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;
        ~Mark() {
            if (!life.expired()) {
                flag = false;
            }
        }

    private:
        bool& flag;
        std::weak_ptr<void> life;
    };

    // Pointer: window_control_pointer.cpp
    CVisualElement* Find(const tamsel7::point<int>& at) const;
    CVisualElement* GetReceiver() const;
    bool Press(const PointerEvent& event, bool double_click);
    bool Release(const PointerEvent& event);
    bool Move(const PointerEvent& event);
    bool Wheel(const PointerEvent& event, int distance);
    void Leave();
    bool ContextMenu(const tamsel7::point<int>& at);
    void SetHover(CVisualElement* element);
    void LoseCapture();
    void UpdateGrab();
    bool IsIdle() const { return buttons == 0 && !capture; }

    // Focus and keys: window_control_keys.cpp
    void SetFocus(CVisualElement* element, bool by_tab);
    void FocusByPress(CVisualElement* element);
    bool KeyDown(int flags, int key);
    bool Traverse(bool backwards);

    // Tooltips: window_control_tooltips.cpp
    void TooltipMoved();
    void AskTooltip();
    void TrackTooltip();
    void HideTooltip();

    // Drag and drop: window_control_dragging.cpp
    void OfferDrag();
    bool DragTo(const tamsel7::point<int>& at);
    bool Drop(const tamsel7::point<int>& at);
    void CancelDrag();
    void InvalidateDragItem();
    void DrawDragItem(tamsel7::IPainter& painter);

    void ForgetElement(CVisualElement* element);

    CWindowControl& control;
    IWindow& window;
    tamsel7::size<int> client;
    bool focused = false;

    // Repainting
    bool scheduled = false;
    bool painting = false;
    tamsel7::rectangle<int> scrolled; ///< pixels that the host has moved since the last pass

    // Pointer
    CElementRef capture; ///< asked for the mouse
    CElementRef pressed; ///< was under the pointer when the first button went down
    CElementRef hovered;
    PointerEvent last;
    tamsel7::point<int> press_at;
    unsigned buttons = 0;           ///< a bit for each button that is down
    bool captured_in_press = false; ///< somebody has dragged since the press: it is no click
    bool pointer_inside = false;
    bool grab_asked = false;
    bool grabbed = false; ///< what the window was told last
    int running = 0;      ///< events that are on the stack
    CursorShape shown_cursor = CursorShape::ARROW;

    CElementRef focus;
    int focus_changes = 0; ///< tells a change that another one has overtaken

    // Tooltips
    CElementRef tooltip_owner; ///< who answered, while a tooltip is up
    tamsel7::CTooltipEvent tooltip;
    bool tooltip_is_up = false;
    bool tooltip_timer = false;

    // Drag and drop
    bool dragging = false;
    bool drag_offered = false; ///< the press that lasts was asked already
    CElementRef drag_source;
    CElementRef drag_target; ///< who would take it
    DragInfo drag;
    tamsel7::rectangle<int> drag_item_shown;

    tamsel7::CTimer repeat{50};
    bool repeat_timer = false;

    /// Expires with the control: events look at it after each call into elements.
    std::shared_ptr<void> life = std::make_shared<char>();
};

} // namespace brevolt7
