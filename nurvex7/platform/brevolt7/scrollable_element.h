#pragma once

#include "nurvex7/platform/brevolt7/scroll_model.h"
#include "nurvex7/platform/brevolt7/visual_element.h"
#include "nurvex7/platform/tamsel7/painter.h"

namespace brevolt7 {

/// An element that shows a part of something larger, as its two scroll models say.
class NURVEX7_API CScrollableElement : public CVisualElement {
public:
    using CVisualElement::CVisualElement;

    /// For containers.
    virtual void SetCentralPane(CVisualElement* pane);
    /// Stores the model and nothing else. Duty: it outlives this element, or null is set.
    virtual void SetVertScroll(IScrollModel* model);
    virtual void SetHorzScroll(IScrollModel* model);
    /// Scrolls by the models' least distance towards a pointer that stands outside the content.
    virtual void ProcessRepeatOperation();
    /// The logical area that shows and the pixels that it shows on. A direction without a model is
    /// in pixels.
    virtual void FillCoordInfo(tamsel7::IPainter::CoordInfo* info);

    IScrollModel* GetVertScroll() const { return vert_scroll; }
    IScrollModel* GetHorzScroll() const { return horz_scroll; }

private:
    IScrollModel* vert_scroll = nullptr;
    IScrollModel* horz_scroll = nullptr;
};

} // namespace brevolt7
