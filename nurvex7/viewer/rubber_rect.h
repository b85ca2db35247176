#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/platform/brevolt7/drawers.h"
#include "nurvex7/platform/brevolt7/pos_converter.h"
#include "nurvex7/platform/brevolt7/visual_element.h"

#include <memory>

namespace brevolt7 {

/// Tracks a drag on its parent: a child of one pixel that takes the mouse while the drag lasts and
/// reports it in the parent's logical coordinates.
///
/// Idle until a press with the left button; then pressed, and dragging after the first move; idle
/// again with the release, or when an owner calls EndDragging.
///
/// Space   of the signals: logical coordinates of the parent; of the fields: pixels of the parent
/// Duty    `new`, like every element; the parent owns it
template <typename Drawer>
class NURVEX7_API CRubberRect : public CVisualElement, public Drawer {
public:
    using position = tamsel7::point<double>;

    /// A press: twice the place of it.
    signal<CRubberRect*, position, position> sig_start;
    /// A move: the place of the press, the place now, and the place at the last move.
    signal<CRubberRect*, position, position, position> sig_move;
    /// A release after at least one move: the place of the press, and the last one painted.
    signal<CRubberRect*, position, position> sig_finish;

    bool drag_enabled = false; ///< whether a press starts a drag
    bool active = false;       ///< there was a move since the press
    bool dragging = false;     ///< between press and release
    bool first_draw = true;    ///< nothing drawn yet
    tamsel7::point<int> start_px;
    tamsel7::point<int> drawn_px; ///< at the last DrawContent
    tamsel7::point<int> cur_px;
    tamsel7::point<int> prev_px; ///< at the last sig_move
    std::unique_ptr<IPosConverter> converter;
    bool clamp_to_parent = true; ///< keeps the pointer in the parent's content

    /// The mouse was taken away in the middle: no move and no release will come.
    signal<CRubberRect*> sig_cancel;

    explicit CRubberRect(CVisualElement* parent_element);
    ~CRubberRect() override;

    /// Back to idle, without a signal.
    void EndDragging();
    /// Receives OnButtonDown of the parent. Space: pixels of the parent.
    void StartDragging(CVisualElement* sender, int x, int y, int flags,
                       tamsel7::MouseButton button);

    void DrawContent(tamsel7::IPainter* painter) override;
    /// False always, so that the parent gets the event too; so does HandleButtonUp.
    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button) override;
    void HandleCaptureLost() override;
    void ChangeParent(CVisualElement* old) override;

private:
    position to_logical(const tamsel7::point<int>& pixel) const;
};

extern template class CRubberRect<DummyDrawer>;

} // namespace brevolt7
