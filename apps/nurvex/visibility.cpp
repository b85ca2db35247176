#include "apps/nurvex/visibility.h"

#include "apps/nurvex/series_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

namespace nurvex {

using namespace nurvex7;

namespace {

/// An owner whose drawing has changed.
struct Concerned {
    Node owner;
    bool has_more; ///< something in it was unfolded
};

Concerned& entry_of(const Node& owner, std::vector<Concerned>& entries) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const Concerned& entry) { return entry.owner == owner; });
    return found != entries.end() ? *found : entries.emplace_back(Concerned{owner, false});
}

/// The owners of what has changed, each once, behind those that are there already.
std::vector<Concerned> owners_concerned(std::vector<Concerned> entries,
                                        const std::vector<VisibilityChange>& changes) {
    for (const VisibilityChange& change : changes) {
        Concerned& entry = entry_of(change.node.GetOwner(), entries);
        entry.has_more = entry.has_more || change.was_hidden;
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
/// for what has come back, or no drawing to put it into.
void make_what_does_not_fit(const Node& top) {
    ForEachNodeIn(
        top,
        [](Node owner) {
            if (owner.GetOwned().GetCount() == 0) {
                return;
            }
            const graph_ptr2<ILayout> layout = owner.GetLayout();
            const IncLayout* const inc = layout_of(layout);
            if (inc == nullptr) {
                return;
            }
            const UpdateOutlook outlook = inc->LookAheadAlone(owner);
            if (outlook == UpdateOutlook::DOES_NOT_FIT ||
                outlook == UpdateOutlook::NEVER_LAID_OUT) {
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

/// What comes back is last in its level for the length of an update, which reckons the height of an
/// owner by the last of each level, though an old node may lie lower. A layout for a series brings
/// its levels into order; to resize an owner of its too would only move columns that stay.
bool needs_resize(const Node& grown) {
    const graph_ptr2<ILayout> layout = grown.GetLayout();
    return dynamic_cast<const SeriesLayout*>(layout.get()) == nullptr;
}

/// `queued`: so many of the first entries have their update queued already.
void queue(const std::vector<Concerned>& entries, std::size_t queued) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Node owner = entries[i].owner;
        if (!is_covered(owner, entries)) {
            prepare_update(owner);
            if (i >= queued) {
                owner.UpdateLayout();
            }
        }
        if (entries[i].has_more && needs_resize(owner)) {
            owner.ResizeSelf();
        }
    }
}

template <typename F>
void for_clusters_around(const Node& node, F f) {
    std::vector<Node> chain{node};
    for (;;) {
        const Node around = chain.back().GetOwner();
        if (around.IsDummy() || IsRoot(around) || around == chain.back()) {
            return;
        }
        f(around);
        chain.push_back(around);
    }
}

} // namespace

void VisibilityRecord::Note(const Node& node) {
    noted.push_back({node, IsFlagSet(node, NODE_HIDDEN)});
}

void VisibilityRecord::NoteNeighbours(const Node& node) {
    for (NodeSet side : {node.GetParents(), node.GetChildren()}) {
        for (int i = 0; i < side.GetCount(); ++i) {
            Note(side.GetItem(i));
            for_clusters_around(side.GetItem(i), [this](const Node& cluster) { Note(cluster); });
        }
    }
}

std::vector<VisibilityChange> VisibilityRecord::FindChanges() const {
    std::vector<VisibilityChange> changes;
    std::unordered_set<int> seen;
    for (const VisibilityChange& entry : noted) {
        const bool changed =
            !entry.node.IsDummy() && IsFlagSet(entry.node, NODE_HIDDEN) != entry.was_hidden;
        if (changed && seen.insert(entry.node.GetID()).second) {
            changes.push_back(entry);
        }
    }
    return changes;
}

void ShowClustersAround(const std::vector<VisibilityChange>& changes) {
    for (const VisibilityChange& change : changes) {
        if (change.was_hidden) {
            for_clusters_around(change.node, &Show);
        }
    }
}

void QueueLayouts(const std::vector<VisibilityChange>& changes) {
    queue(owners_concerned({}, changes), 0);
}

void QueueLayoutsBesideFold(const Node& folded, const std::vector<VisibilityChange>& changes) {
    queue(owners_concerned({{folded.GetOwner(), false}}, changes), 1);
}

} // namespace nurvex
