#include "nurvex7/model/kept_structure.h"

#include "nurvex7/model/queries.h"

#include <typeinfo>
#include <utility>

namespace nurvex7 {

bool KeptStructure::note_added(const graph_ptr<INodeImpl>& node) {
    added_nodes.push_back(node);
    return has_room();
}

bool KeptStructure::note_added(const graph_ptr<IEdgeImpl>& edge) {
    added_edges.push_back(edge);
    return has_room();
}

bool KeptStructure::has_room() const {
    return answers != nullptr &&
           added_nodes.size() + added_edges.size() <= answers->GetCount() / 4 + 16;
}

// Somebody who is still at work with the answers has to find them as they were. Where there is no
// memory for what was added, they stay half done and nobody finds them again.
std::shared_ptr<const StructureIndex> KeptStructure::bring_up_to_date() {
    if (added_nodes.empty() && added_edges.empty()) {
        return answers;
    }
    std::shared_ptr<StructureIndex> longer = std::exchange(answers, nullptr);
    if (longer == nullptr || longer.use_count() > 1 || !longer->Add(added_nodes, added_edges)) {
        return nullptr;
    }
    answers = std::move(longer);
    added_nodes.clear();
    added_edges.clear();
    return answers;
}

std::shared_ptr<const StructureIndex> KeptStructure::find_up_to_date() const {
    return added_nodes.empty() && added_edges.empty() ? answers : nullptr;
}

DefaultRootNodeImpl* telling_root(const graph_ptr<INodeImpl>& root) {
    INodeImpl* const top = root.get();
    return top != nullptr && typeid(*top) == typeid(DefaultRootNodeImpl)
               ? static_cast<DefaultRootNodeImpl*>(top)
               : nullptr;
}

namespace {

DefaultRootNodeImpl* telling_root_above(const Node& node) {
    graph_ptr<INodeImpl> above = node.get_impl();
    while (above.get() != nullptr && above != 0) {
        above = owner_above(above);
    }
    return telling_root(above);
}

// The handles of the answers lead to one store, and a storage can be shown by two graphs.
bool serves(const std::shared_ptr<const StructureIndex>& answers, const Node& owner) {
    return answers != nullptr && answers->Covers(owner) &&
           answers->GetNodes().front().get_vis().get() == owner.get_vis().get();
}

} // namespace

std::shared_ptr<const StructureIndex> StructureIndex::For(const Node& owner) {
    DefaultRootNodeImpl* const root = telling_root_above(owner);
    if (root != nullptr && root->notes.get() != nullptr && root->notes->structure != nullptr) {
        const auto kept = root->notes->structure->bring_up_to_date();
        if (serves(kept, owner)) {
            return kept;
        }
        root->notes->structure.reset();
    }
    const auto found = std::make_shared<StructureIndex>(owner);
    if (root == owner.get_impl().get()) {
        found->keep_at(*root);
    }
    return found;
}

std::shared_ptr<const StructureIndex> StructureIndex::FindKept(const Node& root) {
    const DefaultRootNodeImpl* const top = IsRoot(root) ? telling_root_above(root) : nullptr;
    if (top == nullptr || top->notes.get() == nullptr || top->notes->structure == nullptr) {
        return nullptr;
    }
    const auto kept = top->notes->structure->find_up_to_date();
    return serves(kept, root) ? kept : nullptr;
}

void StructureIndex::ForgetKept(const Node& root) {
    const DefaultRootNodeImpl* const top = telling_root(root.get_impl());
    if (top != nullptr && top->notes.get() != nullptr) {
        top->notes->structure.reset();
    }
}

// Nodes and edges of another kind change without a word, and so does another graph. A removed node
// can only come back by itself, and says so.
void StructureIndex::keep_at(DefaultRootNodeImpl& root) {
    if (!all_tell || !outside.empty() || GetCount() == 0) {
        return;
    }
    if (root.notes.get() == nullptr) {
        root.notes = new GraphNotes;
    }
    const graph_ptr<GraphNotes> notes = root.notes;
    notes->structure.reset();
    for (const std::vector<Node>* const watched : {&nodes, &removed}) {
        for (const Node& node : *watched) {
            tell_notes(static_cast<DefaultRootNodeImpl&>(*node.get_impl()), notes);
        }
    }
    notes->structure = std::make_unique<KeptStructure>(shared_from_this());
}

} // namespace nurvex7
