#pragma once

#include "nurvex7/model/structure_index.h"

#include <memory>
#include <utility>
#include <vector>

namespace nurvex7 {

/// The answers about everything below a root, kept from one run to the next, and what has been
/// added since. Any other change has the owner of this let go of it.
class KeptStructure {
public:
    explicit KeptStructure(std::shared_ptr<StructureIndex> about) : answers(std::move(about)) {}

    // What they give is false where so much has been added that all is better found anew.
    bool note_added(const graph_ptr<INodeImpl>& node);
    bool note_added(const graph_ptr<IEdgeImpl>& edge);

    /// The answers with all that was added; null where they cannot be brought up to that. There
    /// are none from then on.
    std::shared_ptr<const StructureIndex> bring_up_to_date();
    /// The answers as they are; null where something has been added.
    std::shared_ptr<const StructureIndex> find_up_to_date() const;

private:
    bool has_room() const;

    std::shared_ptr<StructureIndex> answers; ///< null where bringing them up to date has failed
    std::vector<graph_ptr<INodeImpl>> added_nodes;
    std::vector<graph_ptr<IEdgeImpl>> added_edges;
};

/// The root of a graph itself, where it is of the kind that tells of changes; null otherwise, also
/// for a node that a graph has for its root.
DefaultRootNodeImpl* telling_root(const graph_ptr<INodeImpl>& root);

} // namespace nurvex7
