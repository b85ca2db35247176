#pragma once

#include "nurvex7/presentation/port_node_handler.h"

namespace nurvex {

/// Fold ports for graphs with clusters. A fold hides and shows neighbours wherever they are, but
/// has only the owner of the clicked node laid out; this handler sees to the other owners, so that
/// their clusters close up around what is gone and make room for what is back.
///
/// Before an update it asks the layout whether the change can be fitted in: of nodes that were
/// never drawn before, several can come in at once with only one of them beside something that is
/// shown. Such an owner is laid out from nothing, and the others keep their drawings.
///
/// Queues  UpdateLayout of each owner with a neighbour that was folded or unfolded, unless an owner
///         around it is to be updated; MakeLayout of each owner that an update cannot serve;
///         ResizeSelf of each owner with a neighbour that was unfolded
class FoldHandler : public nurvex7::PortNodeHandler {
public:
    int HandleClick(nurvex7::Node node, double x, double y, int flags,
                    tamsel7::MouseButton button) override;
};

} // namespace nurvex
