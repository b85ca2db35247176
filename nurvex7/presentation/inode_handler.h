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

/// What measures and draws nodes and answers their pointer events. One handler serves many nodes.
///
/// Every event operation has a body that emits the matching signal and gives HANDLED_NOTHING, so
/// that an application can listen without writing a handler; who overrides one and wants its signal
/// calls the base operation.
/// Space   x and y of events: graph
class NURVEX7_API INodeHandler {
public:
    template <typename... A>
    using signal = corvane2::_internal::signal_t<A...>;

    signal<Node&, double, double, int, tamsel7::MouseButton> sig_button_down;
    signal<Node&, double, double, int, tamsel7::MouseButton> sig_button_up;
    signal<Node&, double, double, int, tamsel7::MouseButton> sig_mouse_move;
    signal<Node&, double, double, int, tamsel7::MouseButton> sig_click;
    signal<Node&, double, double, int, tamsel7::MouseButton> sig_double_click;
    signal<Node&> sig_mouse_hover;
    signal<Node&> sig_mouse_leave;
    signal<Node&, CGraphTooltipEvent*> sig_tooltip;
    signal<Node&, CGraphTooltipEvent*> sig_tooltip_track;
    signal<Node&, tamsel7::rectangle<double>> sig_select_rect;
    signal<Node&, double, double> sig_context_menu;

    INodeHandler();
    INodeHandler(const INodeHandler&) = delete;
    INodeHandler& operator=(const INodeHandler&) = delete;
    virtual ~INodeHandler();

    /// For subclasses; true everywhere here, and nothing in the library asks.
    virtual bool IsRecursiveProcessingNeeded();
    virtual void Draw(Node node, tamsel7::IPainter* painter) = 0;
    /// The size that the node wants. Space: graph.
    virtual tamsel7::size<double> GetSize(Node node) = 0;
    /// The node's outer size around what it owns, and the point where that begins.
    virtual SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) = 0;

    virtual int HandleMouseMove(Node node, double x, double y, int flags,
                                tamsel7::MouseButton button);
    virtual int HandleButtonDown(Node node, double x, double y, int flags,
                                 tamsel7::MouseButton button);
    virtual int HandleButtonUp(Node node, double x, double y, int flags,
                               tamsel7::MouseButton button);
    /// Deliberate: emits sig_double_click, like HandleDoubleClick, and not sig_click.
    virtual int HandleClick(Node node, double x, double y, int flags, tamsel7::MouseButton button);
    virtual int HandleDoubleClick(Node node, double x, double y, int flags,
                                  tamsel7::MouseButton button);
    virtual int HandleMouseHover(Node node);
    virtual int HandleMouseLeave(Node node);
    virtual int HandleOnTooltip(Node node, CGraphTooltipEvent* event);
    virtual int HandleOnTooltipTrack(Node node, CGraphTooltipEvent* event);
    virtual int HandleOnSelectRect(Node node, tamsel7::rectangle<double> area);
    virtual int HandleContextMenu(Node node, double x, double y);

    /// Tells the scale of what is drawn next. The default keeps nothing.
    virtual void SetZoomFactor(double zoom);
};

/// The node handler that every graph starts with: one DummyNodeHandler, made at the first call and
/// kept to the end of the process.
NURVEX7_API graph_ptr2<INodeHandler> GetDefaultNodeHandler();

} // namespace nurvex7
