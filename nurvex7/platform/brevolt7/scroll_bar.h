#pragma once

#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/repeat_timer.h"
#include "nurvex7/platform/brevolt7/scroll_model.h"
#include "nurvex7/platform/brevolt7/visual_element.h"

namespace brevolt7 {

/// What a scroll bar shows: a range, and the part of it that the view has.
///
/// Space   logical
struct ScrollState {
    double from = 0;
    double to = 0;
    double start = 0;
    double span = 0;

    /// The state of a model whose view has so many pixels; the range is never smaller than the
    /// view. Nothing without a model.
    static ScrollState Of(const IScrollModel* model, int pixels);
    /// True where the view does not show the whole range; what is less than half a pixel is no
    /// matter.
    bool IsScrollable(const IScrollModel* model) const;
    bool operator==(const ScrollState&) const = default;
};

/// A track with a thumb. The thumb can be dragged; a press beside it turns one page, and again
/// while it is held, until the thumb has come to the pointer.
class CScrollBar final : public CVisualElement, public CRepeatableOperation {
public:
    static constexpr int THICKNESS = 14;

    /// Tells that the user wants the view to start elsewhere.
    signal<CScrollBar*, double> OnScroll;

    CScrollBar(CVisualElement* box, bool along_x);

    /// The model to show, or null. Duty: it outlives the bar.
    void SetModel(const IScrollModel* shown);

    void UpdateElement() override;
    void DrawContent(tamsel7::IPainter* painter) override;
    bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button) override;
    void HandleMouseHover(CVisualElement* who) override;
    void HandleMouseLeave(CVisualElement* who) override;
    void HandleCaptureLost() override;
    void ProcessSetControl(IControl* control) override;
    void ProcessRepeatOperation() override;

    /// The thumb's first pixel and the one behind its last, along the bar.
    std::pair<int, int> GetThumb() const;

private:
    int length() const;
    int along(int x, int y) const { return horizontal ? x : y; }
    void turn_page();
    void end_press();

    bool horizontal;
    const IScrollModel* model = nullptr;
    ScrollState state; ///< as painted last
    bool dragging = false;
    bool hovered = false;
    int grip = 0;    ///< where the thumb is held, from its first pixel
    int page_to = 0; ///< the pixel that paging goes to
    int ticks = 0;   ///< of the repeat timer since the press
};

} // namespace brevolt7
