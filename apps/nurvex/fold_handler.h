#pragma once

#include "apps/nurvex/visibility.h"
#include "nurvex7/presentation/port_node_handler.h"

#include <vector>

namespace nurvex {

/// Fold ports for graphs with clusters. A fold hides and shows neighbours wherever they are, but
/// has only the owner of the clicked node laid out; this handler sees to the other owners. What
/// comes back brings the clusters around it back too.
///
/// Queues  what QueueLayoutsBesideFold tells
class FoldHandler : public nurvex7::PortNodeHandler {
public:
    int HandleClick(nurvex7::Node node, double x, double y, int flags,
                    tamsel7::MouseButton button) override;

protected:
    /// A click has folded or unfolded neighbours of a node; their layouts are queued.
    virtual void HandleFolded(const nurvex7::Node& node,
                              const std::vector<VisibilityChange>& changes);
};

} // namespace nurvex
