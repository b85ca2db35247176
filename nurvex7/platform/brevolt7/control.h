#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/brevolt7/element_types.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/timer.h"

#include <functional>
#include <memory>
#include <string>

namespace tamsel7 {
class IPainter;
}

namespace brevolt7 {

class CVisualElement;
class IWindowScrollBar;

/// What a tree of elements asks of the window that it stands in. CWindowControl is the one that
/// works; elements reach it with GetControl.
///
/// Space   pixels of the window
class NURVEX7_API IControl {
public:
    virtual ~IControl();

    /// A painter for measuring, at any time.
    virtual tamsel7::IPainter* GetPainter() = 0;
    virtual tamsel7::rectangle<int> GetClientRect() const = 0;
    /// All elements repaint soon what they show of a rectangle. `erase` makes no difference:
    /// elements paint their background themselves.
    virtual void InvalidateRect(int left, int top, int right, int bottom, bool erase) = 0;
    /// The pointer stays with this window, also while no button is down, until EndGrab.
    virtual void StartGrab() = 0;
    virtual void EndGrab() = 0;

    /// Gives the keys to an element; null takes them from all. A container passes them on to its
    /// focus target or, where it takes no focus itself, to its first tab element.
    virtual void SetFocus(CVisualElement* element) = 0;
    virtual CVisualElement* GetFocus() const = 0;
    /// True while the window itself has the focus of its desktop.
    virtual bool IsFocused() const = 0;
    virtual void SetCapture(CVisualElement* element) = 0;
    /// Without effect where another element holds the capture.
    virtual void ReleaseCapture(CVisualElement* element) = 0;
    virtual CVisualElement* GetCapture() const = 0;
    /// Where the last pointer event was.
    virtual tamsel7::point<int> GetPointer() const = 0;

    /// Puts a text, where there is one, and a picture of an area on the clipboard.
    virtual void SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) = 0;
    virtual tamsel7::CTimer& GetRepeatTimer() = 0;
    /// See IWindow.
    virtual std::unique_ptr<IWindowScrollBar> MakeScrollBar(bool horizontal,
                                                            std::function<void(double)> moved) = 0;
    virtual int GetScrollBarThickness() const = 0;

    // What elements report by themselves.
    virtual void RepeatTimerChanged() = 0;
    virtual void ScheduleRepaint() = 0;
    virtual void CursorChanged(CVisualElement* element) = 0;
    /// The element takes no more events: it was hidden, disabled, taken away, or dies.
    virtual void ElementGone(CVisualElement* element) = 0;
    /// Moves the pixels that show an area; false where they cannot be moved, or a pass is painting.
    virtual bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) = 0;
};

} // namespace brevolt7
