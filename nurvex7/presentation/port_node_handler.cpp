#include "nurvex7/presentation/port_node_handler.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

namespace nurvex7 {
namespace {

using tamsel7::MouseButton;

bool is_leaf(const Node& node) {
    return node.GetOwned().GetCount() == 0;
}

int count_visible(NodeSet nodes) {
    int visible = 0;
    for (int i = 0; i < nodes.GetCount(); ++i) {
        visible += IsFlagSet(nodes.GetItem(i), NODE_HIDDEN) ? 0 : 1;
    }
    return visible;
}

int port_state(int visible, int all, bool pressed) {
    int state = 0;
    if (all > 0) {
        state = visible == 0     ? PORT_ALL_HIDDEN
                : visible == all ? PORT_ALL_VISIBLE
                                 : PORT_PARTLY_VISIBLE;
    }
    return pressed ? state | PORT_PRESSED : state;
}

void fold_or_unfold(const Node& node, FoldDirection direction, bool all_visible) {
    if (all_visible) {
        Fold(node, direction);
    } else {
        Unfold(node, direction);
    }
}

} // namespace

PortNodeHandler::PortNodeHandler() {
    CPortNodeDrawInfo& info = drawer.info;
    info.node_font = {"Arial", 1, 7, 0, 0, 1.0};
    info.caption_color = {120, 10, 10};
    info.fill_color_1 = {205, 200, 200};
    info.fill_color_2 = {150, 130, 130};
    info.selected_fill_color_1 = {255, 165, 0};
    info.selected_fill_color_2 = {205, 175, 0};
    info.new_fill_color_1 = {160, 160, 250};
    info.new_fill_color_2 = {100, 100, 160};
    info.fixed_width = true;
}

PortNodeHandler::~PortNodeHandler() = default;

void PortNodeHandler::Draw(Node node, tamsel7::IPainter* painter) {
    set_port_states(node);
    drawer.Draw(node, painter);
}

void PortNodeHandler::set_port_states(const Node& node) {
    const bool pressed = is_pressed(node);
    const int visible_parents = CountVisibleParents(node);
    drawer.SetLeftPortState(
        port_state(visible_parents, CountAllParents(node), pressed && left_port_pressed));
    const int visible_children = CountVisibleChildren(node);
    drawer.SetRightPortState(
        port_state(visible_children, CountAllChildren(node), pressed && right_port_pressed));
}

tamsel7::size<double> PortNodeHandler::GetSize(Node node) {
    return drawer.GetSize(node);
}

SizeAndOrigin PortNodeHandler::GetSize(Node node, tamsel7::size<double> inner) {
    return drawer.GetSize(node, inner);
}

void PortNodeHandler::SetZoomFactor(double zoom) {
    drawer.SetZoomFactor(zoom);
}

int PortNodeHandler::HandleButtonDown(Node node, double x, double y, int flags,
                                      MouseButton button) {
    int result = HANDLED_NOTHING;
    if (is_leaf(node) && button == MouseButton::LEFT) {
        // Both at once on a node that is narrower than its two ports.
        const bool left = drawer.IsLeftPortClicked(node, x, y);
        const bool right = drawer.IsRightPortClicked(node, x, y);
        left_port_pressed = left_port_pressed || left;
        right_port_pressed = right_port_pressed || right;
        result = left || right ? HANDLED_REDRAW_NODE : HANDLED_NOTHING;
    }
    pressed_nodes.push_back(node);
    remember(node);
    sig_button_down(node, x, y, flags, button);
    return result;
}

int PortNodeHandler::HandleButtonUp(Node node, double x, double y, int flags, MouseButton button) {
    int result = HANDLED_DONE;
    if (!pressed_nodes.empty()) {
        result = is_pressed(node) ? HANDLED_REDRAW_NODE : HANDLED_REPAINT_ALL;
    }
    end_presses();
    remember(node);
    sig_button_up(node, x, y, flags, button);
    return result;
}

int PortNodeHandler::HandleClick(Node node, double x, double y, int flags, MouseButton button) {
    int result = HANDLED_NOTHING;
    if (is_leaf(node) && button == MouseButton::LEFT) {
        click_leaf(node, x, y);
        result = HANDLED_REPAINT_ALL;
    }
    remember(node);
    sig_click(node, x, y, flags, button);
    return result;
}

void PortNodeHandler::click_leaf(const Node& node, double x, double y) {
    if (drawer.IsLeftPortClicked(node, x, y) && CountAllParents(node) != 0) {
        fold_or_unfold(node, FOLD_PARENTS, CountAllParents(node) == CountVisibleParents(node));
    } else if (drawer.IsRightPortClicked(node, x, y) && CountAllChildren(node) != 0) {
        fold_or_unfold(node, FOLD_CHILDREN, CountAllChildren(node) == CountVisibleChildren(node));
    } else {
        SetFlag(node, NODE_SELECTED, !IsFlagSet(node, NODE_SELECTED));
    }
}

int PortNodeHandler::HandleMouseHover(Node node) {
    const int result = hover(node, true);
    sig_mouse_hover(node);
    return result;
}

int PortNodeHandler::HandleMouseLeave(Node node) {
    const int result = hover(node, false);
    sig_mouse_leave(node);
    return result;
}

int PortNodeHandler::hover(const Node& node, bool on) {
    end_presses();
    if (!is_leaf(node)) {
        return HANDLED_NOTHING;
    }
    SetFlag(node, NODE_HOVERED, on);
    return HANDLED_REDRAW_NODE;
}

int PortNodeHandler::HandleOnTooltip(Node node, CGraphTooltipEvent* event) {
    if (!is_leaf(node)) {
        return HANDLED_NOTHING;
    }
    const tamsel7::rectangle<double> rect = MakeDRect(node.GetPosition(), node.GetSize());
    event->text = node.GetCaption();
    event->hot_rect = {{rect.left, rect.top}, {rect.right, rect.bottom}};
    remember(node);
    sig_tooltip(node, event);
    return HANDLED_DONE;
}

int PortNodeHandler::CountVisibleChildren(Node node) {
    return count_visible(node.GetChildren());
}

int PortNodeHandler::CountVisibleParents(Node node) {
    return count_visible(node.GetParents());
}

int PortNodeHandler::CountAllChildren(Node node) {
    return node.GetChildren().GetCount();
}

int PortNodeHandler::CountAllParents(Node node) {
    return node.GetParents().GetCount();
}

bool PortNodeHandler::is_pressed(const Node& node) const {
    return !pressed_nodes.empty() && pressed_nodes.front() == node;
}

void PortNodeHandler::end_presses() {
    left_port_pressed = false;
    right_port_pressed = false;
    pressed_nodes.clear();
}

void PortNodeHandler::remember(const Node& node) {
    if (!IsRoot(node)) {
        last_node.clear();
        last_node.push_back(node);
    }
}

} // namespace nurvex7
