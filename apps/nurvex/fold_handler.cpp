#include "apps/nurvex/fold_handler.h"

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <vector>

namespace nurvex {

using namespace nurvex7;

namespace {

struct Neighbour {
    Node node;
    bool was_hidden;
};

std::vector<Neighbour> neighbours_of(const Node& node) {
    std::vector<Neighbour> found;
    for (NodeSet side : {node.GetParents(), node.GetChildren()}) {
        for (int i = 0; i < side.GetCount(); ++i) {
            const Node neighbour = side.GetItem(i);
            found.push_back({neighbour, IsFlagSet(neighbour, NODE_HIDDEN)});
        }
    }
    return found;
}

int count_queued_updates(const Node& node) {
    return node.get_vis()->get_update_list()->GetCount();
}

/// An owner whose drawing a click has changed.
struct Concerned {
    Node owner;
    bool has_more; ///< something in it was unfolded
};

Concerned& entry_of(const Node& owner, std::vector<Concerned>& entries) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const Concerned& entry) { return entry.owner == owner; });
    return found != entries.end() ? *found : entries.emplace_back(Concerned{owner, false});
}

/// The owner of the clicked node first, then those of the neighbours that changed, each once.
std::vector<Concerned> owners_concerned(const Node& clicked,
                                        const std::vector<Neighbour>& neighbours) {
    std::vector<Concerned> entries{{clicked.GetOwner(), false}};
    for (const Neighbour& neighbour : neighbours) {
        // Who listens to clicks may have removed nodes.
        if (neighbour.node.IsDummy() ||
            IsFlagSet(neighbour.node, NODE_HIDDEN) == neighbour.was_hidden) {
            continue;
        }
        Concerned& entry = entry_of(neighbour.node.GetOwner(), entries);
        entry.has_more = entry.has_more || neighbour.was_hidden;
    }
    return entries;
}

/// True where one of the owners stands around another: its update serves that one too.
bool is_covered(const Node& inner, const std::vector<Concerned>& entries) {
    Node above = inner;
    while (!above.IsDummy()) {
        const Node around = above.GetOwner();
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const Concerned& e) { return e.owner == around; });
        if (found != entries.end()) {
            return true;
        }
        if (around == above) {
            return false; // a node that was made its own owner stands in no other
        }
        above = around;
    }
    return false;
}

/// The incremental layout that serves an owner; null where it is one of another kind.
const IncLayout* layout_of(const graph_ptr2<ILayout>& layout) {
    return dynamic_cast<const IncLayout*>(layout.get());
}

/// Queues a full layout of an owner, or of an owner inside it, where an update would find no place
/// for what has come back.
void make_what_does_not_fit(const Node& top) {
    ForEachNodeIn(
        top,
        [](Node owner) {
            if (owner.GetOwned().GetCount() == 0) {
                return;
            }
            const graph_ptr2<ILayout> layout = owner.GetLayout();
            const IncLayout* const inc = layout_of(layout);
            if (inc != nullptr && inc->LookAheadAlone(owner) == UpdateOutlook::DOES_NOT_FIT) {
                owner.MakeLayout();
            }
        },
        /*post_order=*/false, /*include_self=*/true);
}

/// Queues what has to come before an update of an owner.
void prepare_update(Node owner) {
    const graph_ptr2<ILayout> layout = owner.GetLayout();
    const IncLayout* const inc = layout_of(layout);
    if (inc == nullptr) {
        return; // the conduct of other layouts is their own
    }
    switch (inc->LookAhead(owner)) {
    case UpdateOutlook::NEVER_LAID_OUT:
        owner.MakeLayout();
        break;
    case UpdateOutlook::DOES_NOT_FIT:
        make_what_does_not_fit(owner);
        break;
    case UpdateOutlook::NOTHING_NEW:
    case UpdateOutlook::FITS:
        break;
    }
}

} // namespace

int FoldHandler::HandleClick(Node node, double x, double y, int flags,
                             tamsel7::MouseButton button) {
    const std::vector<Neighbour> neighbours = neighbours_of(node);
    const int queued_before = count_queued_updates(node);
    const int result = PortNodeHandler::HandleClick(node, x, y, flags, button);
    const bool has_folded = count_queued_updates(node) > queued_before;
    if (!has_folded || node.IsDummy()) {
        return result;
    }
    const std::vector<Concerned> entries = owners_concerned(node, neighbours);
    for (const Concerned& entry : entries) {
        Node owner = entry.owner;
        if (!is_covered(owner, entries)) {
            prepare_update(owner);
            if (owner != entries.front().owner) { // that one is queued already
                owner.UpdateLayout();
            }
        }
        if (entry.has_more) {
            // What comes back is last in its level for the length of the update, and that reckons
            // the height of an owner by the last of each level, though an old node may lie lower.
            owner.ResizeSelf();
        }
    }
    return result;
}

} // namespace nurvex
