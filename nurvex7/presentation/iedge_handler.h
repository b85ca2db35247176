#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/model/fwd.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/presentation/handler_result.h"
#include "nurvex7/presentation/tooltip_event.h"

namespace tamsel7 {
class IPainter;
}

namespace nurvex7 {

/// What measures and draws edges and answers their pointer events; the counterpart of
/// INodeHandler, without selection and context menu.
///
/// Space   x and y of events: graph
class NURVEX7_API IEdgeHandler {
public:
    template <typename... A>
    using signal = corvane2::_internal::signal_t<A...>;

    signal<Edge&, double, double, int, tamsel7::MouseButton> sig_button_down;
    signal<Edge&, double, double, int, tamsel7::MouseButton> sig_button_up;
    signal<Edge&, double, double, int, tamsel7::MouseButton> sig_mouse_move;
    signal<Edge&, double, double, int, tamsel7::MouseButton> sig_click;
    signal<Edge&, double, double, int, tamsel7::MouseButton> sig_double_click;
    signal<Edge&> sig_mouse_hover;
    signal<Edge&> sig_mouse_leave;
    signal<Edge&, CGraphTooltipEvent*> sig_tooltip;
    signal<Edge&, CGraphTooltipEvent*> sig_tooltip_track;

    IEdgeHandler();
    IEdgeHandler(const IEdgeHandler&) = delete;
    IEdgeHandler& operator=(const IEdgeHandler&) = delete;
    virtual ~IEdgeHandler();

    virtual void Draw(Edge edge, tamsel7::IPainter* painter) = 0;
    /// Tells the scale of what is drawn next. The default keeps nothing.
    virtual void SetZoomFactor(double zoom);
    /// The room that the line takes across its direction; the layout spaces tracks by it.
    /// Space: graph.
    virtual double GetWidth(Edge edge) const = 0;

    virtual int HandleMouseMove(Edge edge, double x, double y, int flags,
                                tamsel7::MouseButton button);
    virtual int HandleButtonDown(Edge edge, double x, double y, int flags,
                                 tamsel7::MouseButton button);
    virtual int HandleButtonUp(Edge edge, double x, double y, int flags,
                               tamsel7::MouseButton button);
    /// Deliberate: emits sig_double_click, like HandleDoubleClick, and not sig_click.
    virtual int HandleClick(Edge edge, double x, double y, int flags, tamsel7::MouseButton button);
    virtual int HandleDoubleClick(Edge edge, double x, double y, int flags,
                                  tamsel7::MouseButton button);
    virtual int HandleMouseHover(Edge edge);
    virtual int HandleMouseLeave(Edge edge);
    virtual int HandleOnTooltip(Edge edge, CGraphTooltipEvent* event);
    virtual int HandleOnTooltipTrack(Edge edge, CGraphTooltipEvent* event);
};

/// The edge handler that every graph starts with: one DummyEdgeHandler, made at the first call and
/// kept to the end of the process.
NURVEX7_API graph_ptr2<IEdgeHandler> GetDefaultEdgeHandler();

} // namespace nurvex7
