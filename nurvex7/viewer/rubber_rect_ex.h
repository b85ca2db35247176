#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/platform/brevolt7/drawers.h"
#include "nurvex7/platform/brevolt7/pos_converter.h"

#include <memory>

namespace brevolt7 {

/// A rubber rectangle that is seen: draws a frame from the press to the pointer, and scrolls its
/// parent when the pointer leaves it, by as much as the pointer stands outside.
///
/// It scrolls by the models given to its SetHorzScroll and SetVertScroll; without one, the pointer
/// is kept in the parent's content in that direction.
///
/// Space   of the signals and positions: logical coordinates of the parent
/// Duty    `new`, like every element; the parent owns it, and emits OnBeforeDraw before it paints
template <typename Drawer>
class NURVEX7_API CRubberRectEx : public CCentralPart, public Drawer {
public:
    using position = tamsel7::point<double>;

    /// A press: twice the place of it.
    signal<CRubberRectEx*, position, position> sig_start;
    /// A move: the frame's first corner, its second one now, and at the last move.
    signal<CRubberRectEx*, position, position, position> sig_move;
    /// A release, also without a move: the frame as it was painted last.
    signal<CRubberRectEx*, position, position> sig_finish;

    bool drag_enabled = false; ///< whether a press starts a drag
    bool active = false;       ///< there was a move since the press
    bool dragging = false;     ///< between press and release
    bool first_draw = true;    ///< no frame stands on the screen
    position drawn_start;
    position cur_start;
    position drawn_end;
    position cur_end;
    position prev_end;
    double min_x = 0; ///< limits of the pointer
    double max_x = 0;
    int rubber_style = 2; ///< carried for applications, like release_flags
    std::unique_ptr<IPosConverter> converter;
    bool erase_by_redraw = true; ///< a frame that was scrolled is erased before the parent paints
    bool scrolled = false;
    tamsel7::point<int> start_px;
    int release_flags = 0;

    explicit CRubberRectEx(CVisualElement* parent_element);
    ~CRubberRectEx() override;

    /// Back to idle, without a signal. A frame on the screen goes with the next repaint.
    void EndDragging();
    /// Receives OnButtonDown of the parent. Space: pixels of the parent.
    void StartDragging(CVisualElement* sender, int x, int y, int flags,
                       tamsel7::MouseButton button);
    /// Receives OnBeforeDraw of the parent.
    void BeforeDrawProcess(CVisualElement* sender, tamsel7::IPainter* painter);

    void DrawContent(tamsel7::IPainter* painter) override;
    /// False always, so that the parent gets the event too; so does HandleButtonUp.
    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button) override;
    void HandleCaptureLost() override;
    void ChangeParent(CVisualElement* old) override;

private:
    void connect_to_parent();
    int limited_x(int x, int y) const;
    bool scroll_towards(IScrollModel* model, double low, double high, double at, int pixels);
    bool scroll_to(int& x, int& y);
    void invalidate_frame();
    position to_logical(int x, int y) const;
};

extern template class CRubberRectEx<FocusRectDrawer>;

} // namespace brevolt7
