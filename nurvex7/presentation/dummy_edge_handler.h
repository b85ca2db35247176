#pragma once

#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/presentation/iedge_handler.h"

namespace nurvex7 {

/// The default edge handler: a thin line through the break nodes of an edge with an arrow head at
/// its end. It lights up under the pointer and answers tooltips with the caption.
///
/// Keeps   nothing per edge: hover and highlight are flags of the edge
class NURVEX7_API DummyEdgeHandler : public IEdgeHandler {
public:
    tamsel7::_color highlight_color{255, 0, 0}; ///< of an edge with EDGE_HIGHLIGHTED
    tamsel7::_color edge_color{0, 0, 0};        ///< of any other edge
    int line_width = 1;                         ///< pen width; pixel
    double zoom_factor = 1.0;                   ///< the last zoom above 0

    ~DummyEdgeHandler() override;

    /// Draws an edge that has EDGE_DRAWN and at least two break nodes. Sets the pen and leaves it
    /// so; sets no brush.
    void Draw(Edge edge, tamsel7::IPainter* painter) override;
    /// A zoom of 0 or below is ignored.
    void SetZoomFactor(double zoom) override;
    /// Always 1: the tracks of a drawing depend neither on the zoom nor on the pen.
    double GetWidth(Edge edge) const override;

    /// Sets EDGE_HOVERED.
    /// Deliberate: emits nothing, and neither does HandleMouseLeave, whereas HandleOnTooltip does.
    int HandleMouseHover(Edge edge) override;
    /// Clears EDGE_HOVERED. Emits nothing.
    int HandleMouseLeave(Edge edge) override;
    /// Answers with the caption, valid in a small square around the pointer. Emits sig_tooltip.
    int HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) override;
};

} // namespace nurvex7
