#pragma once

#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <memory>
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

    /// The answers with all that was added; null where they cannot be brought up to that.
    std::shared_ptr<const StructureIndex> bring_up_to_date();
    /// The answers as they are; null where something has been added.
    std::shared_ptr<const StructureIndex> find_up_to_date() const;

private:
    bool has_room() const;

    std::shared_ptr<StructureIndex> answers;
    std::vector<graph_ptr<INodeImpl>> added_nodes;
    std::vector<graph_ptr<IEdgeImpl>> added_edges;
};

} // namespace nurvex7
