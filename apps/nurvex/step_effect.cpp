#include "apps/nurvex/step_effect.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>

namespace nurvex {

using namespace nurvex7;

namespace {

/// From the direct owner of a node to the root.
std::vector<Node> owners_above(const Node& node) {
    std::vector<Node> owners;
    for (Node at = node; !IsRoot(at);) {
        at = at.GetOwner();
        owners.push_back(at);
    }
    return owners;
}

/// One step at work on a graph.
class StepAtWork {
public:
    StepAtWork(const Step& given_step, NumberedGraph& given_graph)
        : step(given_step), graph(given_graph) {}

    void Make(const Change& change) {
        switch (change.verb) {
        case Verb::FOLD:
        case Verb::UNFOLD:
            fold(change);
            break;
        case Verb::HIDE:
        case Verb::SHOW:
            set_hidden(change);
            break;
        case Verb::ADD:
            add(change);
            break;
        case Verb::LINK:
            link(change);
            break;
        case Verb::REMOVE_NODE:
            note_owner(known(change.node));
            graph.Remove(change.node);
            break;
        case Verb::REMOVE_EDGES:
            remove_edges(change);
            break;
        case Verb::RESIZE:
            resize(change);
            break;
        }
    }

    /// Without what a later change of the step has removed.
    StepEffect Take() {
        std::map<std::size_t, std::vector<Node>> by_depth;
        for (const auto& [id, owner] : owners) {
            if (IsRoot(owner) || !owner.IsDummy()) {
                by_depth[owners_above(owner).size()].push_back(owner);
            }
        }
        StepEffect effect;
        for (auto depth = by_depth.rbegin(); depth != by_depth.rend(); ++depth) {
            effect.owners.insert(effect.owners.end(), depth->second.begin(), depth->second.end());
        }
        for (const auto& [id, sized] : sizes) {
            if (!sized.first.IsDummy()) {
                effect.sizes.push_back(sized);
            }
        }
        return effect;
    }

private:
    [[noreturn]] void refuse(const std::string& reason) const { RefuseStep(step, reason); }

    Node known(int file_id) const {
        const Node* const node = graph.Find(file_id);
        if (node == nullptr) {
            refuse("there is no node " + std::to_string(file_id) +
                   "; name one of the file or of an \"add\" before, that has not been removed");
        }
        return *node;
    }

    void note(const Node& owner) { owners.emplace(owner.GetID(), owner); }
    void note_owner(const Node& node) { note(node.GetOwner()); }

    void fold(const Change& change) {
        const Node node = known(change.node);
        const bool folds = change.verb == Verb::FOLD;
        const bool children = change.direction == FOLD_CHILDREN;
        NodeSet beside = children ? node.GetChildren() : node.GetParents();
        bool changes = false;
        for (int i = 0; i < beside.GetCount(); ++i) {
            const Node neighbour = beside.GetItem(i);
            if (IsFlagSet(neighbour, NODE_HIDDEN) != folds) {
                changes = true;
                note_owner(neighbour);
            }
        }
        if (!changes) {
            refuse("node " + std::to_string(change.node) + " has no " +
                   (children ? "children" : "parents") + " that are " +
                   (folds ? "shown" : "hidden") + ", so nothing would change");
        }
        note_owner(node);
        if (folds) {
            Fold(node, change.direction);
        } else {
            Unfold(node, change.direction);
        }
    }

    void set_hidden(const Change& change) {
        const Node node = known(change.node);
        const bool hides = change.verb == Verb::HIDE;
        if (IsFlagSet(node, NODE_HIDDEN) == hides) {
            refuse("node " + std::to_string(change.node) + " is " + (hides ? "hidden" : "shown") +
                   " already");
        }
        note_owner(node);
        if (hides) {
            Hide(node);
        } else {
            Show(node);
        }
    }

    void add(const Change& change) {
        if (change.node < 1) {
            refuse("the id of a new node is a number from 1 on");
        }
        if (graph.Find(change.node) != nullptr) {
            refuse("the id " + std::to_string(change.node) + " is taken; choose another number");
        }
        const Node owner = change.owner == 0 ? graph.GetGraph()->GetRoot() : known(change.owner);
        graph.Add(change.node, change.caption, owner);
        note(owner);
        // An owner that was a leaf until now becomes a cluster beside its siblings.
        if (!IsRoot(owner) && owner.GetOwned().GetCount() == 1) {
            note_owner(owner);
        }
    }

    void link(const Change& change) {
        Node from = known(change.node);
        const Node to = known(change.target);
        from.LinkTo(to);
        note_crossed(from, to);
    }

    void remove_edges(const Change& change) {
        const Node from = known(change.node);
        const Node to = known(change.target);
        std::vector<Edge> gone;
        EdgeSet out = from.GetEdgesOut();
        for (int i = 0; i < out.GetCount(); ++i) {
            if (out.GetItem(i).To() == to) {
                gone.push_back(out.GetItem(i));
            }
        }
        if (gone.empty()) {
            refuse("no edge leads from node " + std::to_string(change.node) + " to node " +
                   std::to_string(change.target));
        }
        for (Edge& edge : gone) {
            edge.Remove();
        }
        note_crossed(from, to);
    }

    /// The owner that both ends have in common, and all whose border the edge crosses.
    void note_crossed(const Node& from, const Node& to) {
        const std::vector<Node> left = owners_above(from);
        const std::vector<Node> entered = owners_above(to);
        auto a = left.rbegin();
        auto b = entered.rbegin();
        while (a + 1 != left.rend() && b + 1 != entered.rend() && *(a + 1) == *(b + 1)) {
            ++a;
            ++b;
        }
        std::for_each(a, left.rend(), [this](const Node& owner) { note(owner); });
        std::for_each(b, entered.rend(), [this](const Node& owner) { note(owner); });
    }

    void resize(const Change& change) {
        const Node node = known(change.node);
        if (node.GetOwned().GetCount() > 0) {
            refuse("node " + std::to_string(change.node) +
                   " is a cluster, as large as what it owns; resize that");
        }
        const auto [place, first] = sizes.try_emplace(node.GetID(), node, change.size);
        place->second.second = change.size;
        note_owner(node);
    }

    const Step& step;
    NumberedGraph& graph;
    std::map<int, Node> owners;                                  // by id
    std::map<int, std::pair<Node, tamsel7::size<double>>> sizes; // by id
};

} // namespace

StepEffect ApplyStep(const Step& step, NumberedGraph& graph) {
    StepAtWork work(step, graph);
    for (const Change& change : step.changes) {
        work.Make(change);
    }
    return work.Take();
}

} // namespace nurvex
