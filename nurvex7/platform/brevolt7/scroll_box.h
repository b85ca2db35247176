#pragma once

#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/platform/brevolt7/element_ref.h"

#include <memory>

namespace brevolt7 {

class CScrollBar;

/// Shows a central pane with two scroll bars beside it.
///
/// The pane's models go in by SetVertScroll and SetHorzScroll. The wrapped models come out: they
/// forward to these, scroll the pane's pixels, and keep the bars in step; the pane scrolls itself
/// through them. Where the user scrolls, by a bar, the wheel or a key, the pane's SetPos is called
/// with its own place after that, so that it hears of it.
///
/// Keys: page up and down, home, end; with the control key along x. The wheel scrolls along y, with
/// the shift key along x; with the control key it is left to others.
class NURVEX7_API CScrollBox : public CCentralPart {
public:
    /// What a bar policy may be.
    enum BarPolicy : int { BAR_AS_NEEDED = 0, BAR_ALWAYS = 1, BAR_HIDDEN = 2 };

    /// Taken up by the next repaint pass.
    int horz_bar_policy = BAR_AS_NEEDED;
    int vert_bar_policy = BAR_AS_NEEDED;

    CScrollBox(CVisualElement* parent, const tamsel7::size<int>& size, Alignment alignment);
    ~CScrollBox() override;

    /// The pane has to be a child of the box. It gets what room the bars leave, and the focus.
    void SetCentralPane(CVisualElement* pane) override;
    void SetVertScroll(IScrollModel* model) override;
    void SetHorzScroll(IScrollModel* model) override;
    /// Valid as long as the box is; without a model they stand at 0 and ignore what is set.
    IScrollModel* GetWrappedVertScroll() const;
    IScrollModel* GetWrappedHorzScroll() const;

    /// The room that the bars leave.
    tamsel7::rectangle<int> GetContentRect() const override;
    void DrawContent(tamsel7::IPainter* painter) override;
    void UpdateElement() override;
    bool HandleWheel(int x, int y, int flags, tamsel7::MouseButton button, int distance) override;
    bool HandleKeyDown(int flags, int key) override;
    void ProcessRearrange(CVisualElement** who) override;

private:
    class WrappedModel;

    void place_parts();
    void scroll_to(WrappedModel& wrapped, double start);
    bool scroll_by_user(WrappedModel& wrapped, double start);
    void HandleBarScroll(CScrollBar* bar, double start);

    CElementRef pane;
    bool has_pane = false;
    bool placing = false;
    std::unique_ptr<WrappedModel> vert;
    std::unique_ptr<WrappedModel> horz;
    CScrollBar* vert_bar = nullptr;
    CScrollBar* horz_bar = nullptr;
};

} // namespace brevolt7
