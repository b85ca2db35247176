#pragma once

#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/repeat_timer.h"
#include "nurvex7/platform/brevolt7/scroll_model.h"
#include "nurvex7/platform/brevolt7/scroll_state.h"
#include "nurvex7/platform/brevolt7/visual_element.h"
#include "nurvex7/platform/brevolt7/window.h"

#include <memory>
#include <utility>

namespace brevolt7 {

/// A scroll bar: one of the window's own kind where the window has them, else a track with a thumb.
/// The thumb can be dragged; a press beside it turns one page, and again while it is held, until
/// the thumb has come to the pointer.
class CScrollBar final : public CVisualElement, public CRepeatableOperation {
public:
    static constexpr int THICKNESS = 14; ///< of a painted one

    /// Tells that the user wants the view to start elsewhere.
    signal<CScrollBar*, double> OnScroll;

    CScrollBar(CVisualElement* box, bool along_x);

    /// The model to show, or null. Duty: it outlives the bar.
    void SetModel(const IScrollModel* shown);
    int GetThickness() const;
    bool IsPainted() const { return window_bar == nullptr; }

    void UpdateElement() override;
    void DrawContent(tamsel7::IPainter* painter) override;
    bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button) override;
    void HandleMouseHover(CVisualElement* who) override;
    void HandleMouseLeave(CVisualElement* who) override;
    void HandleCaptureLost() override;
    void ProcessSetControl(IControl* control) override;
    void ProcessSetVisible(bool visible) override;
    void ProcessSetParentVisible(bool visible) override;
    void HandleRefreshPos() override;
    void ProcessRepeatOperation() override;

    /// The thumb's first pixel and the one behind its last, along the bar.
    std::pair<int, int> GetThumb() const;

private:
    int length() const;
    int along(int x, int y) const { return horizontal ? x : y; }
    void turn_page();
    void end_press();
    void take_window_bar(IControl* control);
    void place_window_bar();
    void show_window_bar();

    bool horizontal;
    const IScrollModel* model = nullptr;
    ScrollState state; ///< as painted last
    bool dragging = false;
    bool hovered = false;
    int grip = 0;                                 ///< where the thumb is held, from its first pixel
    int page_to = 0;                              ///< the pixel that paging goes to
    std::unique_ptr<IWindowScrollBar> window_bar; ///< null where this element paints
    bool in_sight = true;                         ///< no parent is hidden
    int ticks = 0;                                ///< of the repeat timer since the press
};

} // namespace brevolt7
