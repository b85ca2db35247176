#include "apps/nurvex/starts.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace nurvex {

using namespace nurvex7;

namespace {

/// Walks along edges from leaf to leaf, each leaf once.
class LeafWalk {
public:
    explicit LeafWalk(const Node& root) {
        ForEachNodeIn(
            root,
            [this](const Node& node) {
                if (node.GetOwned().GetCount() == 0) {
                    places.emplace(node.GetID(), leaves.size());
                    leaves.push_back(node);
                }
            },
            /*post_order=*/false, /*include_self=*/false);
        Restart();
    }

    const std::vector<Node>& GetLeaves() const { return leaves; }
    bool IsReached(std::size_t leaf) const { return reached[leaf]; }
    void Restart() { reached.assign(leaves.size(), false); }

    /// Appends what is reached from a leaf, itself too, each behind what is reached only from it.
    void Go(std::size_t from, std::vector<std::size_t>& finished) {
        enter(from);
        while (!open.empty()) {
            Step& step = open.back();
            if (step.next == step.children.GetCount()) {
                finished.push_back(step.leaf);
                open.pop_back();
                continue;
            }
            const auto found = places.find(step.children.GetItem(step.next++).GetID());
            if (found != places.end() && !reached[found->second]) {
                enter(found->second);
            }
        }
    }

private:
    struct Step {
        std::size_t leaf;
        NodeSet children;
        int next;
    };

    void enter(std::size_t leaf) {
        reached[leaf] = true;
        open.push_back(Step{leaf, leaves[leaf].GetChildren(), 0});
    }

    std::vector<Node> leaves;
    std::unordered_map<int, std::size_t> places; ///< by id
    std::vector<bool> reached;
    std::vector<Step> open;
};

} // namespace

/// Where a first walk enters a cycle that nothing leads into, it is done with all that lies behind
/// before it is done with that leaf: of what is not reached yet, the one that was done last is a
/// start.
std::vector<Node> FindStarts(const Node& root) {
    LeafWalk walk(root);
    const std::vector<Node>& leaves = walk.GetLeaves();
    std::vector<std::size_t> finished;
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        if (!walk.IsReached(i)) {
            walk.Go(i, finished);
        }
    }
    walk.Restart();
    std::vector<bool> is_start(leaves.size());
    std::vector<std::size_t> reached;
    for (auto i = finished.rbegin(); i != finished.rend(); ++i) {
        if (!walk.IsReached(*i)) {
            is_start[*i] = true;
            walk.Go(*i, reached);
        }
    }
    std::vector<Node> starts;
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        if (is_start[i]) {
            starts.push_back(leaves[i]);
        }
    }
    return starts;
}

void ShowOnlyStarts(const Node& root) {
    std::unordered_set<int> kept; ///< ids
    for (const Node& start : FindStarts(root)) {
        Node node = start;
        while (!IsRoot(node) && kept.insert(node.GetID()).second) {
            const Node around = node.GetOwner();
            node = around;
        }
    }
    ForEachNodeIn(
        root,
        [&kept](const Node& node) {
            if (kept.count(node.GetID()) > 0) {
                Show(node);
            } else {
                Hide(node);
                Unselect(node);
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

} // namespace nurvex
