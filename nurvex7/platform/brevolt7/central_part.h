#pragma once

#include "nurvex7/platform/brevolt7/repeat_timer.h"
#include "nurvex7/platform/brevolt7/scrollable_element.h"

namespace brevolt7 {

/// A scrollable element that takes the focus and paints only what is invalid.
class NURVEX7_API CCentralPart : public CScrollableElement, public CRepeatableOperation {
public:
    CCentralPart(CVisualElement* parent, const tamsel7::size<int>& size, Alignment alignment);

    bool IsFullRepainted() const override;
    /// Moves the pixels and invalidates what comes into view. False where the window cannot,
    /// where something lies over the element, and where its parent shows through.
    bool ScrollContent(int dx, int dy) override;
    void ProcessSetControl(IControl* control) override;
    /// Afterwards a logical point p shows at pixel (p - start) * scale, by the scroll models.
    void SetCoordSystem(tamsel7::IPainter* painter) override;
    void SetPos(const tamsel7::rectangle<int>& place, bool repaint) override;
    void ProcessRepeatOperation() override;
};

} // namespace brevolt7
