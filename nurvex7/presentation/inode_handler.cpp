#include "nurvex7/presentation/inode_handler.h"

#include "nurvex7/model/node.h"

namespace nurvex7 {

INodeHandler::INodeHandler() = default;
INodeHandler::~INodeHandler() = default;

bool INodeHandler::IsRecursiveProcessingNeeded() {
    return true;
}

int INodeHandler::HandleMouseMove(Node node, double x, double y, int flags,
                                  tamsel7::MouseButton button) {
    sig_mouse_move(node, x, y, flags, button);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleButtonDown(Node node, double x, double y, int flags,
                                   tamsel7::MouseButton button) {
    sig_button_down(node, x, y, flags, button);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleButtonUp(Node node, double x, double y, int flags,
                                 tamsel7::MouseButton button) {
    sig_button_up(node, x, y, flags, button);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleClick(Node node, double x, double y, int flags,
                              tamsel7::MouseButton button) {
    // Deliberate: a listener on double clicks hears single clicks too, once for each.
    sig_double_click(node, x, y, flags, button);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleDoubleClick(Node node, double x, double y, int flags,
                                    tamsel7::MouseButton button) {
    sig_double_click(node, x, y, flags, button);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleMouseHover(Node node) {
    sig_mouse_hover(node);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleMouseLeave(Node node) {
    sig_mouse_leave(node);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleOnTooltip(Node node, CGraphTooltipEvent* event) {
    sig_tooltip(node, event);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleOnTooltipTrack(Node node, CGraphTooltipEvent* event) {
    sig_tooltip_track(node, event);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleOnSelectRect(Node node, tamsel7::rectangle<double> area) {
    sig_select_rect(node, area);
    return HANDLED_NOTHING;
}

int INodeHandler::HandleContextMenu(Node node, double x, double y) {
    sig_context_menu(node, x, y);
    return HANDLED_NOTHING;
}

void INodeHandler::SetZoomFactor(double) {}

} // namespace nurvex7
