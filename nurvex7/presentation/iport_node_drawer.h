#pragma once

#include "nurvex7/presentation/inode_drawer.h"

namespace nurvex7 {

/// What a fold port shows, as bits. A state without any of the first three draws no port: the node
/// has no neighbours on that side.
enum PortState : int {
    PORT_ALL_VISIBLE = 1,    ///< all neighbours of the side are shown: "-"
    PORT_ALL_HIDDEN = 2,     ///< none is shown: "+"
    PORT_PARTLY_VISIBLE = 4, ///< some are shown: "<" on the left, ">" on the right
    PORT_PRESSED = 8         ///< the port is held down; its colour is lightened
};

/// How a node with fold ports looks: on its left the port of its parents, on its right that of its
/// children. One drawer serves many nodes, so the states are those of the node that is drawn next.
class NURVEX7_API IPortNodeDrawer : public INodeDrawer {
public:
    /// True where a point lies on the place of a port, its border included. The place is the same
    /// whether a port is drawn there or not.
    /// Space   graph
    virtual bool IsLeftPortClicked(Node node, double x, double y) const = 0;
    virtual bool IsRightPortClicked(Node node, double x, double y) const = 0;
    /// The state for the next Draw: bits of PortState.
    virtual void SetLeftPortState(int state) = 0;
    virtual void SetRightPortState(int state) = 0;
    ~IPortNodeDrawer() override;
};

} // namespace nurvex7
