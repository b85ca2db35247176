#include "apps/nurvex/fold_handler.h"

namespace nurvex {

using namespace nurvex7;

namespace {

int count_queued_updates(const Node& node) {
    return node.get_vis()->get_update_list()->GetCount();
}

} // namespace

int FoldHandler::HandleClick(Node node, double x, double y, int flags,
                             tamsel7::MouseButton button) {
    VisibilityRecord neighbours;
    neighbours.NoteNeighbours(node);
    const int queued_before = count_queued_updates(node);
    const int result = PortNodeHandler::HandleClick(node, x, y, flags, button);
    // Who listens to clicks may have removed nodes, or had the graph laid out already.
    if (node.IsDummy()) {
        return result;
    }
    ShowClustersAround(neighbours.FindChanges());
    const std::vector<VisibilityChange> changes = neighbours.FindChanges();
    if (changes.empty()) {
        return result;
    }
    if (count_queued_updates(node) > queued_before) {
        QueueLayoutsBesideFold(node, changes);
    } else {
        QueueLayouts(changes);
    }
    HandleFolded(node, changes);
    return result;
}

void FoldHandler::HandleFolded(const Node& /*node*/,
                               const std::vector<VisibilityChange>& /*changes*/) {}

} // namespace nurvex
