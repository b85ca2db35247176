#include "tests/support/random_nest.h"

#include "nurvex7/model/queries.h"

#include <cstddef>

namespace nurvex7::testing_support {

RandomNest::RandomNest(unsigned seed) : random(seed), graph(new Graph, /*owns=*/true) {
    add_nodes(2 + below(40));
    add_edges(static_cast<unsigned>(nodes.size()) * 2);
    move_nodes(below(10));
    if (seed % 3 == 0) {
        remove_nodes(below(4));
        add_edges(3);
    }
    place_everything();
}

unsigned RandomNest::below(unsigned bound) {
    return static_cast<unsigned>(random() % bound);
}

Node RandomNest::pick() {
    return nodes.empty() ? graph->GetRoot() : nodes[below(static_cast<unsigned>(nodes.size()))];
}

void RandomNest::add_nodes(unsigned count) {
    const unsigned flatness = 1 + below(4);
    for (unsigned i = 0; i < count; ++i) {
        Node owner = below(flatness) == 0 ? pick() : graph->GetRoot();
        nodes.push_back(owner.AddNode());
    }
}

void RandomNest::add_edges(unsigned count) {
    for (unsigned i = 0; i < count && !nodes.empty(); ++i) {
        Node source = pick();
        Node target = below(8) == 0 ? source : pick();
        if (below(4) == 0 && !IsRoot(source.GetOwner())) {
            target = Node(source.GetOwner());
        }
        for (unsigned parallel = 1 + below(5) / 4; parallel > 0; --parallel) {
            Node from = below(2) == 0 ? source : target;
            edges.push_back(from.LinkTo(from == source ? target : source));
        }
    }
}

void RandomNest::move_nodes(unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        Node node = pick();
        const Node owner = pick();
        if (node != owner) {
            node.SetOwner(owner);
        }
    }
}

void RandomNest::remove_nodes(unsigned count) {
    for (unsigned i = 0; i < count && !nodes.empty(); ++i) {
        pick().Remove();
        std::vector<Node> left;
        for (const Node& node : nodes) {
            if (!node.IsDummy()) {
                left.push_back(node);
            }
        }
        nodes.swap(left);
    }
}

// Thirds are no round numbers in binary, so that a sum in another order shows in the last bit.
void RandomNest::place_everything() {
    const auto coordinate = [this] { return static_cast<double>(below(100'000)) / 3.0; };
    for (Node& node : nodes) {
        node.SetPosition(coordinate(), coordinate());
        node.SetSize({coordinate(), coordinate()});
    }
    for (Edge& edge : edges) {
        for (const Node& owner : nodes) {
            if (below(3) == 0) {
                edge.AddBreakNodesIn(owner, 1 + static_cast<int>(below(2)));
            }
        }
        edge.AddBreakNodesIn(graph->GetRoot(), static_cast<int>(below(3)));
    }
}

} // namespace nurvex7::testing_support
