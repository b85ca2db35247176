#pragma once

#include "nurvex7/model/node.h"

#include <vector>

namespace nurvex {

/// A node that was hidden or shown.
struct VisibilityChange {
    nurvex7::Node node;
    bool was_hidden;
};

/// What nodes were hidden at a point in time, to be compared with later.
class VisibilityRecord {
public:
    void Note(const nurvex7::Node& node);
    /// The parents and children of a node, and the clusters around them.
    void NoteNeighbours(const nurvex7::Node& node);
    /// Those of the noted nodes that have been hidden or shown since, each once. Nodes that have
    /// been removed meanwhile are left out.
    /// Order   as noted
    std::vector<VisibilityChange> FindChanges() const;

private:
    std::vector<VisibilityChange> noted;
};

/// Shows the clusters around all that was shown: else it would not be seen.
void ShowClustersAround(const std::vector<VisibilityChange>& changes);

/// Has the clusters of all nodes concerned laid out: they close up around what is gone and make
/// room for what is back.
///
/// Before an update the layout is asked whether the change can be fitted in: of nodes that were
/// never drawn before, several can come in at once with only one of them beside something that is
/// shown. Such an owner is laid out from nothing, and the others keep their drawings.
///
/// Queues  UpdateLayout of each owner with a node that was hidden or shown, unless an owner around
///         it is to be updated; MakeLayout of each owner that an update cannot serve; ResizeSelf of
///         each owner with a node that was shown, but for those that a SeriesLayout serves
void QueueLayouts(const std::vector<VisibilityChange>& changes);
/// The same after a fold or unfold of a node, which has queued the update of its owner itself.
void QueueLayoutsBesideFold(const nurvex7::Node& folded,
                            const std::vector<VisibilityChange>& changes);

} // namespace nurvex
