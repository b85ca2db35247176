#include "nurvex7/viewer/drawing_walks.h"

#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace nurvex7 {

void DrawNode::operator()(const Node& node) const {
    const graph_ptr2<INodeHandler> handler = node.GetHandler();
    if (handler.get() != nullptr) {
        handler->SetZoomFactor(scale);
        handler->Draw(node, painter);
    }
}

void DrawEdge::operator()(const Edge& edge) const {
    const graph_ptr2<IEdgeHandler> handler = edge.GetHandler();
    if (handler.get() != nullptr) {
        handler->SetZoomFactor(scale);
        handler->Draw(edge, painter);
    }
}

void CollectEdgesInNodes::operator()(const Node& node) {
    const tamsel7::rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
    EdgeSet hits = graph->HitEdgeTest(r.left, r.top, r.right, r.bottom);
    for (int i = 0; i < hits.GetCount(); ++i) {
        edges.push_back(hits.GetItem(i));
    }
}

namespace {

/// Nodes to be put in order, by their places in the list that was given.
class OwnershipOrder {
public:
    explicit OwnershipOrder(const std::vector<Node>& given) : nodes(given), by_id(given.size()) {
        std::iota(by_id.begin(), by_id.end(), std::size_t{0});
        std::stable_sort(by_id.begin(), by_id.end(), [&](std::size_t a, std::size_t b) {
            const bool dummy_a = nodes[a].IsDummy();
            const bool dummy_b = nodes[b].IsDummy();
            return dummy_a != dummy_b ? dummy_b : nodes[a] < nodes[b];
        });
        real_end = std::find_if(by_id.begin(), by_id.end(),
                                [&](std::size_t i) { return nodes[i].IsDummy(); });
    }

    std::vector<std::size_t> Find() {
        taken.assign(nodes.size(), false);
        result.reserve(nodes.size());
        for (const std::size_t place : by_id) {
            take_with_owners(place);
        }
        return result;
    }

private:
    /// The place of a real node with an id, or the number of nodes.
    std::size_t find(int id) const {
        const auto found =
            std::lower_bound(by_id.begin(), real_end, id, [&](std::size_t place, int wanted) {
                return nodes[place].GetID() < wanted;
            });
        return found != real_end && nodes[*found].GetID() == id ? *found : nodes.size();
    }

    /// Takes a node after those of its owners that were not taken yet, the outermost first. Above
    /// one that was taken there is none left.
    void take_with_owners(std::size_t place) {
        if (taken[place]) {
            return;
        }
        std::vector<std::size_t> chain{place};
        taken[place] = true;
        for (auto above = owner_above(nodes[place].get_impl());
             above.get() != nullptr && above != 0; above = owner_above(above)) {
            const std::size_t owner = find(above->get_id());
            if (owner == nodes.size()) {
                continue;
            }
            if (taken[owner]) {
                break;
            }
            chain.push_back(owner);
            taken[owner] = true;
        }
        result.insert(result.end(), chain.rbegin(), chain.rend());
    }

    const std::vector<Node>& nodes;
    std::vector<std::size_t> by_id; ///< real nodes first
    std::vector<std::size_t>::const_iterator real_end;
    std::vector<bool> taken;
    std::vector<std::size_t> result;
};

} // namespace

void sort_by_ownership(std::vector<Node>& nodes) {
    if (nodes.size() < 2) {
        return;
    }
    std::vector<Node> sorted;
    sorted.reserve(nodes.size());
    for (const std::size_t place : OwnershipOrder(nodes).Find()) {
        sorted.push_back(nodes[place]);
    }
    nodes.swap(sorted); // handles of equal ids refuse to be assigned
}

} // namespace nurvex7
