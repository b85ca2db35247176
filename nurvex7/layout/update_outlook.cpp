#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <memory>
#include <span>
#include <vector>

namespace nurvex7 {

namespace {

/// Looks at the components of one owner as an Update would find them. What has no record reads as
/// the default, and none is made.
class Outlook {
public:
    using store = GraphInfoStore<NodeInfo, EdgeInfo>;

    Outlook(const store* records_of_owner, const StructureIndex& index, bool with_hidden)
        : records(records_of_owner), answers(index), keep_hidden(with_hidden) {}

    UpdateOutlook of(const Node& owner) {
        NodeSet owned = owner.GetOwned();
        // An old node keeps its place, and one that comes back has one: where no node is unknown,
        // everything fits, and how they hang together need not be known.
        if (knows_all(owner, owned)) {
            return any_comes_back(owned) || has_new_edge(owned) ? UpdateOutlook::FITS
                                                                : UpdateOutlook::NOTHING_NEW;
        }
        UpdateOutlook outlook = UpdateOutlook::NOTHING_NEW;
        for (int i = 0; i < owned.GetCount(); ++i) {
            const Node start = owned.GetItem(i);
            if (takes_part(start) && !visited[start.GetID()]) {
                outlook = std::max(outlook, of_component(start));
            }
        }
        return outlook;
    }

private:
    /// Whether all that take part have a place, and no edge leads to a stranger: to a node of
    /// another graph, or of another owner, as removals can leave it.
    bool knows_all(const Node& owner, NodeSet& owned) const {
        const int home = answers.FindPlace(owner);
        for (int i = 0; i < owned.GetCount(); ++i) {
            const Node n = owned.GetItem(i);
            const int place = answers.FindPlace(n);
            const bool known = !takes_part(n) || record_of(n).is_old;
            if (place < 0 || !known || !leads_home(answers.ChildLinks(place), home) ||
                !leads_home(answers.ParentLinks(place), home)) {
                return false;
            }
        }
        return true;
    }

    bool leads_home(std::span<const StructureIndex::Link> links, int home) const {
        return std::all_of(links.begin(), links.end(), [&](const StructureIndex::Link& link) {
            return answers.IsInside(link.node) &&
                   answers.OwnerPlaceOf(static_cast<std::size_t>(link.node)) ==
                       static_cast<std::size_t>(home);
        });
    }

    static bool comes_back(const Node& n, const NodeInfo& info) {
        return info.is_old && info.was_hidden && !IsFlagSet(n, NODE_HIDDEN);
    }

    bool any_comes_back(NodeSet& owned) const {
        for (int i = 0; i < owned.GetCount(); ++i) {
            const Node n = owned.GetItem(i);
            if (comes_back(n, record_of(n))) {
                return true;
            }
        }
        return false;
    }

    bool has_new_edge(NodeSet& owned) const {
        for (int i = 0; i < owned.GetCount(); ++i) {
            if (has_new_edge(owned.GetItem(i))) {
                return true;
            }
        }
        return false;
    }

    /// One that is drawn.
    bool has_new_edge(const Node& n) const {
        if (IsFlagSet(n, NODE_HIDDEN)) {
            return false;
        }
        for (const auto pairs : {answers.Children(n), answers.Parents(n)}) {
            for (const StructureIndex::Pair& pair : pairs) {
                if (!is_old(pair.edge) && !IsFlagSet(pair.node, NODE_HIDDEN)) {
                    return true;
                }
            }
        }
        return false;
    }

    UpdateOutlook of_component(const Node& start) {
        bool all_new = true;
        bool any_new = false;
        bool all_anchored = true;
        visited[start.GetID()] = true;
        open.push_back(start);
        while (!open.empty()) {
            const Node n = open.back();
            open.pop_back();
            const NodeInfo info = record_of(n);
            const bool hidden = IsFlagSet(n, NODE_HIDDEN);
            all_new = all_new && (!info.is_old || info.was_hidden);
            any_new = any_new || !info.is_old || comes_back(n, info);
            // Looked around in any case: the walk goes on from there.
            const bool anchored = look_around(n, hidden, any_new);
            all_anchored = all_anchored && (anchored || info.is_old);
        }
        if (!all_new && !all_anchored) {
            return UpdateOutlook::DOES_NOT_FIT;
        }
        return any_new ? UpdateOutlook::FITS : UpdateOutlook::NOTHING_NEW;
    }

    // Opens the neighbours of a node and notes new edges. Gives whether a neighbour is old and was
    // visible.
    bool look_around(const Node& n, bool hidden, bool& any_new) {
        bool anchored = false;
        for (const auto pairs : {answers.Children(n), answers.Parents(n)}) {
            for (const StructureIndex::Pair& pair : pairs) {
                if (!takes_part(pair.node)) {
                    continue;
                }
                const NodeInfo neighbour = record_of(pair.node);
                anchored = anchored || (neighbour.is_old && !neighbour.was_hidden);
                const bool drawn = !hidden && !IsFlagSet(pair.node, NODE_HIDDEN);
                any_new = any_new || (drawn && !is_old(pair.edge));
                bool& seen = visited[pair.node.GetID()];
                if (!seen) {
                    seen = true;
                    open.push_back(pair.node);
                }
            }
        }
        return anchored;
    }

    bool takes_part(const Node& n) const { return keep_hidden || !IsFlagSet(n, NODE_HIDDEN); }

    NodeInfo record_of(const Node& n) const {
        const NodeInfo* const record = records != nullptr ? records->node_info.find(n) : nullptr;
        return record != nullptr && record->level >= 0 ? *record : NodeInfo();
    }

    bool is_old(const Edge& e) const {
        const store::edge_entry* const entry =
            records != nullptr ? records->edge_info.find(e.GetID()) : nullptr;
        return entry != nullptr && entry->second.is_old;
    }

    const store* records;
    const StructureIndex& answers;
    bool keep_hidden;
    IdMap<bool> visited; // by node id
    std::vector<Node> open;
};

} // namespace

UpdateOutlook IncLayout::LookAhead(const Node& owner) const {
    return look_ahead(owner, true);
}

UpdateOutlook IncLayout::LookAheadAlone(const Node& owner) const {
    return look_ahead(owner, false);
}

UpdateOutlook IncLayout::look_ahead(const Node& owner, bool with_owners_inside) const {
    if (owner.GetOwned().GetCount() == 0) {
        return UpdateOutlook::NOTHING_NEW;
    }
    const bool never_laid_out = cluster_info.find(owner) == cluster_info.end();
    // Those that are kept with the root know of nodes beside the owner too, which are not to be
    // looked at.
    const std::shared_ptr<const StructureIndex> asked =
        IsRoot(owner) || !with_owners_inside ? StructureIndex::For(owner)
                                             : std::make_shared<const StructureIndex>(owner);
    const StructureIndex& answers = *asked;
    UpdateOutlook outlook = UpdateOutlook::NOTHING_NEW;
    const std::vector<Node> alone{owner};
    for (const Node& n : with_owners_inside ? answers.GetNodes() : alone) {
        const IncLayout* const serving = n == owner ? this : layout_that_serves(n);
        if (serving == nullptr || n.GetOwned().GetCount() == 0) {
            continue;
        }
        const auto found = serving->cluster_info.find(n);
        const node_store* const records =
            found != serving->cluster_info.end() ? &found->second : nullptr;
        outlook = std::max(outlook, Outlook(records, answers, serving->keep_hidden).of(n));
    }
    // An owner that this object never laid out may own some that another one did.
    return never_laid_out && outlook != UpdateOutlook::DOES_NOT_FIT ? UpdateOutlook::NEVER_LAID_OUT
                                                                    : outlook;
}

// Asked without making a record, as Node::GetLayout would. Null where it is a layout of another
// kind, whose conduct is its own.
const IncLayout* IncLayout::layout_that_serves(const Node& node) const {
    const auto* const store = dynamic_cast<const DefaultGraphVis*>(node.get_vis().get());
    const ILayout* const layout = store != nullptr ? store->find_layout(node.GetID()) : nullptr;
    return dynamic_cast<const IncLayout*>(layout);
}

} // namespace nurvex7
