#pragma once

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/presentation/inode_handler.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <vector>

/// Graphs by name and size, the same in every run.
namespace families {

/// Every node takes 60 x 20: what is measured is the layout, not the measuring of captions.
class FixedSizeHandler : public nurvex7::INodeHandler {
public:
    void Draw(nurvex7::Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(nurvex7::Node) override { return {60, 20}; }
    nurvex7::SizeAndOrigin GetSize(nurvex7::Node, tamsel7::size<double> inner) override {
        return {inner, {}};
    }
};

/// A graph with a layout of its own, so that no run meets the tables of another. The graph does not
/// own it: the tables hold nodes, and with them the store that would own the layout.
struct Bench {
    Bench() : layout(new nurvex7::IncLayout), graph(new nurvex7::Graph, true) {
        graph->SetDefaultLayout(
            nurvex7::graph_ptr2<nurvex7::ILayout>(layout.get(), /*owns=*/false));
        graph->SetDefaultNodeHandler(
            nurvex7::graph_ptr2<nurvex7::INodeHandler>(new FixedSizeHandler, true));
    }

    void Make() { layout->Make(graph->GetRoot()); }

    std::unique_ptr<nurvex7::IncLayout> layout;
    nurvex7::graph_ptr2<nurvex7::Graph> graph;
};

inline std::vector<nurvex7::Node> add_nodes(nurvex7::Node owner, std::size_t count) {
    std::vector<nurvex7::Node> added;
    added.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        added.push_back(owner.AddNode());
    }
    return added;
}

/// One node after the other.
inline Bench chain(std::size_t n) {
    Bench b;
    std::vector<nurvex7::Node> nodes = add_nodes(b.graph->GetRoot(), n);
    for (std::size_t i = 1; i < n; ++i) {
        nodes[i - 1].LinkTo(nodes[i]);
    }
    return b;
}

/// Every node but the first hangs on a random one before it, not far back.
inline Bench tree(std::size_t n) {
    Bench b;
    std::mt19937 random(7);
    std::vector<nurvex7::Node> nodes = add_nodes(b.graph->GetRoot(), n);
    for (std::size_t i = 1; i < n; ++i) {
        nodes[i / 4 + random() % (i - i / 4)].LinkTo(nodes[i]);
    }
    return b;
}

/// Links nodes that stand in about sqrt(n) layers with 1.5 x as many edges: one from the layer
/// before to each node, which keeps every node on its layer, and half as many that lead one to
/// three layers on.
inline void link_sparsely(std::vector<nurvex7::Node>& nodes, std::mt19937& random) {
    const std::size_t n = nodes.size();
    const std::size_t width =
        std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(static_cast<double>(n))));
    for (std::size_t to = width; to < n; ++to) {
        nodes[(to / width - 1) * width + random() % width].LinkTo(nodes[to]);
    }
    for (std::size_t i = 0; i < n / 2; ++i) {
        const std::size_t from = random() % n;
        const std::size_t to = (from / width + 1 + random() % 3) * width + random() % width;
        if (to < n) {
            nodes[from].LinkTo(nodes[to]);
        }
    }
}

/// Edges = 1.5 x nodes, spanning few levels.
inline Bench sparse(std::size_t n) {
    Bench b;
    std::mt19937 random(11);
    std::vector<nurvex7::Node> nodes = add_nodes(b.graph->GetRoot(), n);
    link_sparsely(nodes, random);
    return b;
}

/// About sqrt(n) layers of as many nodes, each linked to the nodes beside it on the next layer:
/// what a view from near shows of it is the same at every size.
inline Bench mesh(std::size_t n) {
    Bench b;
    std::vector<nurvex7::Node> nodes = add_nodes(b.graph->GetRoot(), n);
    const std::size_t width =
        std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(static_cast<double>(n))));
    for (std::size_t i = 0; i + width < n; ++i) {
        nodes[i].LinkTo(nodes[i + width]);
        if (i % 2 == 0 && (i + 1) % width != 0 && i + width + 1 < n) {
            nodes[i].LinkTo(nodes[i + width + 1]);
        }
    }
    return b;
}

/// Clusters of ten nodes in clusters of ten clusters, and so on; half of the edges stay in their
/// innermost cluster, the others lead anywhere.
inline Bench nested(std::size_t n) {
    Bench b;
    std::mt19937 random(13);
    std::vector<nurvex7::Node> owners = {b.graph->GetRoot()};
    while (owners.size() * 10 < n) {
        std::vector<nurvex7::Node> inner;
        for (nurvex7::Node& owner : owners) {
            for (nurvex7::Node& node : add_nodes(owner, 10)) {
                inner.push_back(node);
            }
        }
        owners.swap(inner);
    }
    std::vector<nurvex7::Node> leaves;
    for (nurvex7::Node& owner : owners) {
        std::vector<nurvex7::Node> own = add_nodes(owner, 10);
        link_sparsely(own, random);
        leaves.insert(leaves.end(), own.begin(), own.end());
    }
    for (std::size_t i = 0; i < leaves.size() / 4; ++i) {
        const std::size_t from = random() % leaves.size();
        const std::size_t to = std::min(leaves.size() - 1, from + 1 + random() % 40);
        leaves[from].LinkTo(leaves[to]);
    }
    return b;
}

/// Gives a node in the midst of a graph twenty more children, which lead nowhere.
inline nurvex7::Node add_fan(nurvex7::Graph& graph) {
    nurvex7::NodeSet owned = graph.GetRoot().GetOwned();
    nurvex7::Node middle = owned.GetItem(owned.GetCount() / 2);
    for (nurvex7::Node& child : add_nodes(middle.GetOwner(), 20)) {
        middle.LinkTo(child);
    }
    return middle;
}

} // namespace families
