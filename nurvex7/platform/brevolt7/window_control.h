#pragma once

#include "nurvex7/platform/brevolt7/control.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/visual_element.h"
#include "nurvex7/platform/brevolt7/window.h"

#include <functional>
#include <memory>
#include <string>

namespace brevolt7 {

/// A tree of elements in a window: tells them of events, and has them painted. A host makes one for
/// its window and calls the Process... operations; an application makes its elements inside
/// GetRoot(), with ALIGN_FILL for one that takes the whole window.
///
/// Pointer. An event goes to the element that has captured the mouse; else, while a button is down,
/// to the one that was pressed; else to the topmost one under the pointer that is visible and
/// enabled. Elements of a single pixel are never under the pointer. From there it climbs.
///
/// A press moves the focus to the nearest element around it that takes it. Double clicks are the
/// host's to detect: it knows the user's settings.
///
/// Everything may happen in an event: elements, and the control itself, may be deleted. What is
/// deleted gets no more calls, and the event ends there.
///
/// Space   pixels of the window
/// Duty    one thread; the window outlives the control
class NURVEX7_API CWindowControl : public IControl {
public:
    /// The ids of the timers of IWindow.
    enum TimerId : int { TIMER_TOOLTIP = 1, TIMER_REPEAT = 2 };

    /// How long the pointer rests before a tooltip appears, in milliseconds; 0 for never.
    int tooltip_delay = 500;
    /// How far the pointer moves from a press before something is dragged.
    int drag_distance = 4;

    explicit CWindowControl(IWindow& window);
    CWindowControl(const CWindowControl&) = delete;
    CWindowControl& operator=(const CWindowControl&) = delete;
    /// Tells all elements, and deletes them.
    ~CWindowControl() override;

    /// The element that fills the window and shows the palette's background.
    CVisualElement* GetRoot() const { return root; }

    // What a host calls. The results: true where somebody handled the event.

    void ProcessResize(const tamsel7::size<int>& client);
    /// One repaint pass: UpdateElement of all visible elements, then everything that has changed
    /// since the last pass. Gives the rectangle around what it may have painted.
    ///
    /// Order   parents before their children, children as they lie. What is invalidated meanwhile
    ///         is painted by the next pass, which is scheduled.
    /// Duty    the painter is in pixels of the window, with no clip; what it painted stays
    tamsel7::rectangle<int> ProcessPaint(tamsel7::IPainter* painter);
    bool ProcessMouseMove(int x, int y, int flags, tamsel7::MouseButton button);
    bool ProcessButtonDown(int x, int y, int flags, tamsel7::MouseButton button);
    bool ProcessButtonUp(int x, int y, int flags, tamsel7::MouseButton button);
    /// The second press of a double click, in place of ProcessButtonDown; ProcessButtonUp follows.
    bool ProcessDoubleClick(int x, int y, int flags, tamsel7::MouseButton button);
    bool ProcessWheel(int x, int y, int flags, tamsel7::MouseButton button, int distance);
    /// The pointer left the window.
    void ProcessMouseLeave();
    /// The desktop took the pointer away: the release of what is pressed will never come.
    void ProcessCaptureLost();
    /// Keys go to the element with the focus and climb. What nobody handles: the tab key moves the
    /// focus, control and C (or insert) copies to the clipboard, the menu key asks for the context
    /// menu. The escape key ends a drag before anything else.
    bool ProcessKeyDown(int flags, int key);
    bool ProcessKeyUp(int flags, int key);
    bool ProcessChar(char byte);
    void ProcessFocusChange(bool focused);
    /// Not while something is pressed or captured: a drag goes on undisturbed.
    bool ProcessContextMenu(int x, int y);
    void ProcessTimer(int id);
    void ProcessSysColorsChange();
    /// Something from outside is dragged over the window, is dropped, or leaves again.
    bool ProcessDragOver(int x, int y, DragInfo& info);
    bool ProcessDrop(int x, int y, DragInfo& info);

    // IControl

    tamsel7::IPainter* GetPainter() override;
    tamsel7::rectangle<int> GetClientRect() const override;
    void InvalidateRect(int left, int top, int right, int bottom, bool erase) override;
    void StartGrab() override;
    void EndGrab() override;
    void SetFocus(CVisualElement* element) override;
    CVisualElement* GetFocus() const override;
    bool IsFocused() const override;
    void SetCapture(CVisualElement* element) override;
    void ReleaseCapture(CVisualElement* element) override;
    CVisualElement* GetCapture() const override;
    tamsel7::point<int> GetPointer() const override;
    void SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) override;
    tamsel7::CTimer& GetRepeatTimer() override;
    std::unique_ptr<IWindowScrollBar> MakeScrollBar(bool horizontal,
                                                    std::function<void(double)> moved) override;
    int GetScrollBarThickness() const override;
    void RepeatTimerChanged() override;
    void ScheduleRepaint() override;
    void CursorChanged(CVisualElement* element) override;
    void ElementGone(CVisualElement* element) override;
    bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) override;

private:
    class Inside;

    CVisualElement* root;
    std::unique_ptr<Inside> inside;
};

} // namespace brevolt7
