#pragma once

#include "nurvex7/model/node.h"
#include "nurvex7/presentation/inode_handler.h"
#include "nurvex7/presentation/rect_port_node_drawer.h"

#include <vector>

namespace nurvex7 {

/// A node handler with fold ports: a click on the left port folds or unfolds the parents of a node,
/// one on the right port its children, one elsewhere selects the node or takes the selection back.
/// All nodes are equally wide. Clusters have no ports, no hover and no tooltip.
///
/// What a port shows is counted anew at each draw, so it never disagrees with the graph.
///
/// Queues  on a fold, UpdateLayout of the clicked node's owner and nothing else, see Fold
/// Keeps   the node of the last event, and with it its visual store; also after the graph is gone
/// Duty    `drawer.SetIPainter` before a layout measures nodes; without a painter they have no size
class NURVEX7_API PortNodeHandler : public INodeHandler {
public:
    PortNodeHandler();
    ~PortNodeHandler() override;

    void Draw(Node node, tamsel7::IPainter* painter) override;
    tamsel7::size<double> GetSize(Node node) override;
    SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) override;
    /// A port under the first button is pressed, and asks for a redraw. Emits sig_button_down.
    int HandleButtonDown(Node node, double x, double y, int flags,
                         tamsel7::MouseButton button) override;
    /// Ends every press. Emits sig_button_up.
    int HandleButtonUp(Node node, double x, double y, int flags,
                       tamsel7::MouseButton button) override;
    /// With the first button on a leaf, folds where all neighbours of the port's side are shown and
    /// unfolds where any is hidden; beside the ports, or on one without neighbours, it toggles
    /// NODE_SELECTED. Presses play no part in it.
    /// Deliberate: emits sig_click, unlike INodeHandler::HandleClick.
    int HandleClick(Node node, double x, double y, int flags, tamsel7::MouseButton button) override;
    /// Ends every press and sets NODE_HOVERED on a leaf. Emits sig_mouse_hover.
    int HandleMouseHover(Node node) override;
    /// Ends every press and clears NODE_HOVERED on a leaf. Emits sig_mouse_leave.
    int HandleMouseLeave(Node node) override;
    /// Answers for a leaf with its caption, valid on its whole rectangle. Emits sig_tooltip.
    /// Deliberate: for a cluster nothing happens and nothing is emitted.
    int HandleOnTooltip(Node node, CGraphTooltipEvent* event) override;
    /// A zoom of 0 or below is ignored.
    void SetZoomFactor(double zoom) override;

    /// The neighbours that the ports stand for; a derived handler may count others.
    virtual int CountVisibleChildren(Node node);
    virtual int CountVisibleParents(Node node);
    virtual int CountAllChildren(Node node);
    virtual int CountAllParents(Node node);

protected:
    /// Has the drawer show the ports of a node as they are now.
    void set_port_states(const Node& node);

    /// Presses without a release yet. One handler serves many nodes; only the first entry counts.
    std::vector<Node> pressed_nodes;
    bool right_port_pressed = false;
    bool left_port_pressed = false;
    /// At most one: the last node but the root that had a button, a click or a tooltip. For derived
    /// handlers; nothing here reads it.
    std::vector<Node> last_node;

public:
    /// What measures and draws; its `info` holds the looks.
    CRectPortNodeDrawer drawer;

private:
    bool is_pressed(const Node& node) const;
    void end_presses();
    void remember(const Node& node);
    void click_leaf(const Node& node, double x, double y);
    int hover(const Node& node, bool on);
};

} // namespace nurvex7
