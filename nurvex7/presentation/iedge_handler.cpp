#include "nurvex7/presentation/iedge_handler.h"

#include "nurvex7/model/node.h"

namespace nurvex7 {

IEdgeHandler::IEdgeHandler() = default;
IEdgeHandler::~IEdgeHandler() = default;

void IEdgeHandler::SetZoomFactor(double) {}

int IEdgeHandler::HandleMouseMove(Edge edge, double x, double y, int flags,
                                  tamsel7::MouseButton button) {
    sig_mouse_move(edge, x, y, flags, button);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleButtonDown(Edge edge, double x, double y, int flags,
                                   tamsel7::MouseButton button) {
    sig_button_down(edge, x, y, flags, button);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleButtonUp(Edge edge, double x, double y, int flags,
                                 tamsel7::MouseButton button) {
    sig_button_up(edge, x, y, flags, button);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleClick(Edge edge, double x, double y, int flags,
                              tamsel7::MouseButton button) {
    // Deliberate: a listener on double clicks hears single clicks too, as it does on nodes.
    sig_double_click(edge, x, y, flags, button);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleDoubleClick(Edge edge, double x, double y, int flags,
                                    tamsel7::MouseButton button) {
    sig_double_click(edge, x, y, flags, button);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleMouseHover(Edge edge) {
    sig_mouse_hover(edge);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleMouseLeave(Edge edge) {
    sig_mouse_leave(edge);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) {
    sig_tooltip(edge, event);
    return HANDLED_NOTHING;
}

int IEdgeHandler::HandleOnTooltipTrack(Edge edge, CGraphTooltipEvent* event) {
    sig_tooltip_track(edge, event);
    return HANDLED_NOTHING;
}

} // namespace nurvex7
