#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/viewer/ioverview.h"
#include "nurvex7/viewer/iviewer.h"
#include "nurvex7/viewer/rubber_rect.h"

namespace nurvex7 {

/// Shows the whole graph of a viewer, scaled to fit and without edges, with a frame around what the
/// viewer shows. A drag inside the frame scrolls the viewer; a drag of its border, two pixels to
/// either side, resizes the frame, and its width sets the viewer's scale. The arrow keys scroll the
/// viewer by ten units.
///
/// Space   graph; the drawing begins at (0, 0), not at the root's position
/// Duty    see IOverview::SetViewer. Without a viewer only the background is painted.
class NURVEX7_API COverviewContent : public IOverview, public brevolt7::CCentralPart {
public:
    using drag_rubber = brevolt7::CRubberRect<brevolt7::DummyDrawer>;
    using position = tamsel7::point<double>;

    COverviewContent(brevolt7::CVisualElement* parent_element, IViewer* shown_viewer);
    ~COverviewContent() override;

    void SetViewer(IViewer* shown_viewer) override;
    IViewer* GetViewer() const override;
    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetViewWidth(double width) override;
    void SetViewHeight(double height) override;

    void DrawContent(tamsel7::IPainter* painter) override;
    bool IsFullRepainted() const override;
    void SetPos(const tamsel7::rectangle<int>& place, bool repaint) override;
    void SetCoordSystem(tamsel7::IPainter* painter) override;
    bool HandleKeyDown(int flags, int key) override;

    /// Receives OnChangeView of the viewer.
    void HandleOnChangeView(position a, position b);
    // Receivers of the rubber rectangle.
    void StartShiftProcessing(drag_rubber* rubber, position p, position same);
    void ShiftProcessing(drag_rubber* rubber, position start, position cur, position prev);

protected:
    enum ShiftMode : int { SHIFT_RESIZE = 0, SHIFT_MOVE = 1 };

    void compute_zoom();
    void move_viewer(position cur, position prev);
    void drag_border(position start, position cur, position prev);
    // The parts of DrawContent.
    void draw_ground(tamsel7::IPainter* painter) const;
    void draw_nodes(tamsel7::IPainter* painter) const;
    void draw_frame(tamsel7::IPainter* painter) const;

    drag_rubber* shift_rubber = nullptr;
    IViewer* viewer = nullptr;
    double view_left = 0; ///< what the viewer shows
    double view_top = 0;
    double view_right = 0;
    double view_bottom = 0;
    double overview_zoom = 0; ///< pixels for one unit
    int shift_mode = SHIFT_RESIZE;
    double saved_left = 0; ///< the frame at the start of a resize
    double saved_top = 0;
    double saved_right = 0;
    double saved_bottom = 0;
};

} // namespace nurvex7
