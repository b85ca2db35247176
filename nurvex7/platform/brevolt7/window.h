#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/brevolt7/element_types.h"
#include "nurvex7/platform/brevolt7/scroll_state.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/tooltip_event.h"

#include <functional>
#include <memory>
#include <string>

namespace tamsel7 {
class IPainter;
}

namespace brevolt7 {

/// A scroll bar of the window's own kind, in the place of a painted one.
class NURVEX7_API IWindowScrollBar {
public:
    virtual ~IWindowScrollBar();
    /// Space: pixels of the window.
    virtual void SetPlace(const tamsel7::rectangle<int>& place) = 0;
    virtual void SetShown(bool shown) = 0;
    /// What the bar is to show. Duty: the bar does not report it as a move of the user.
    virtual void SetState(const ScrollState& state) = 0;
};

/// The window that a CWindowControl stands in: all that a host implements.
///
/// Space   pixels of the window
/// Duty    what a repaint pass has painted is there in the next one: passes paint only what has
///         changed, so a host paints into a picture that it keeps. No operation calls back into
///         the control before it returns.
class NURVEX7_API IWindow {
public:
    virtual ~IWindow();

    /// A painter for measuring, valid as long as the window is.
    virtual tamsel7::IPainter* GetPainter() = 0;
    /// Call CWindowControl::ProcessPaint soon, from the event loop. Asked once for each pass.
    virtual void ScheduleRepaint() = 0;
    /// Moves the kept pixels of an area by a distance, inside the area. A host that cannot gives
    /// false, and the area is painted anew.
    virtual bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) = 0;
    /// While on, all pointer events come here, wherever the pointer is.
    virtual void GrabPointer(bool on) = 0;
    virtual void SetCursor(CursorShape shape) = 0;
    /// The window itself is to receive the keys.
    virtual void TakeFocus() = 0;
    /// Shows a tooltip, in place of one that is up.
    virtual void ShowTooltip(const tamsel7::CTooltipEvent& event) = 0;
    virtual void HideTooltip() = 0;
    /// Calls CWindowControl::ProcessTimer with `id` every so many milliseconds; a timer that runs
    /// begins anew.
    virtual void StartTimer(int id, int milliseconds) = 0;
    virtual void StopTimer(int id) = 0;
    /// Puts a text, where there is one, and the kept pixels of an area on the clipboard.
    virtual void SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) = 0;
    /// A scroll bar that calls `moved` with the start that the user wants, from the event loop. The
    /// body gives none: bars are painted then.
    virtual std::unique_ptr<IWindowScrollBar> MakeScrollBar(bool horizontal,
                                                            std::function<void(double)> moved);
    /// How thick such bars are.
    virtual int GetScrollBarThickness() const;
};

} // namespace brevolt7
