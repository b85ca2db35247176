#include "tests/support/random_graph.h"

#include "tests/support/plain_queries.h"

#include <algorithm>
#include <string>

namespace nurvex7::testing_support {

namespace {

int below(std::mt19937& random, int bound) {
    return bound > 0 ? static_cast<int>(random() % static_cast<unsigned>(bound)) : 0;
}

bool chance(std::mt19937& random, int percent) {
    return below(random, 100) < percent;
}

template <typename T>
const T& any_of(std::mt19937& random, const std::vector<T>& choice) {
    return choice[static_cast<std::size_t>(below(random, static_cast<int>(choice.size())))];
}

/// Sevenths, so that no sum comes out even by accident.
tamsel7::size<double> odd_size(std::mt19937& random) {
    const int width = below(random, 800);
    const int height = below(random, 400);
    return {10 + width / 7.0, 5 + height / 7.0};
}

void give_size(TestGraph& g, std::mt19937& random, const Node& node) {
    g.node_handler.sizes[node.GetID()] = odd_size(random);
}

std::vector<Node> siblings_of(const Node& node) {
    return items(node.GetOwner().GetOwned());
}

void add_random_edge(TestGraph& g, std::mt19937& random, const RandomShape& shape) {
    const std::vector<Node> nodes = g.nodes();
    Node from = any_of(random, nodes);
    Node to =
        chance(random, shape.own_owner) ? any_of(random, siblings_of(from)) : any_of(random, nodes);
    const bool turn = chance(random, shape.forward) && to < from;
    if (chance(random, shape.self)) {
        to = from;
    } else if (chance(random, shape.to_cluster) && !IsRoot(from.GetOwner())) {
        to = from.GetOwner();
    } else if (chance(random, shape.parallel) && !g.edges().empty()) {
        const Edge last = g.edges().back();
        from = last.From();
        to = last.To();
    }
    const Edge edge = turn ? g.add_edge(to, from) : g.add_edge(from, to);
    if (chance(random, shape.odd_size)) {
        g.edge_handler.widths[edge.GetID()] = 1 + below(random, 20) / 3.0;
    }
}

/// A new node and an edge that ties it to a visible node beside it.
void add_tied_node(TestGraph& g, std::mt19937& random) {
    const Node beside = any_of(random, g.nodes());
    const Node added = g.add_node(beside.GetOwner(), "n" + std::to_string(random() % 100000));
    if (chance(random, 50)) {
        give_size(g, random, added);
    }
    if (chance(random, 10)) {
        return;
    }
    if (chance(random, 50)) {
        g.add_edge(added, beside);
    } else {
        g.add_edge(beside, added);
    }
}

void toggle(TestGraph& g, std::mt19937& random) {
    const Node node = any_of(random, g.nodes());
    if (hidden(node)) {
        Show(node);
    } else {
        Hide(node);
    }
}

void fold_or_unfold(TestGraph& g, std::mt19937& random) {
    const Node node = any_of(random, g.nodes());
    const FoldDirection direction = chance(random, 50) ? FOLD_CHILDREN : FOLD_PARENTS;
    if (chance(random, 50)) {
        Fold(node, direction);
    } else {
        Unfold(node, direction);
    }
}

void remove_something(TestGraph& g, std::mt19937& random) {
    if (chance(random, 50) && !g.edges().empty()) {
        Edge gone = any_of(random, g.edges());
        gone.Remove();
    } else if (g.nodes().size() > 3) {
        Node gone = any_of(random, g.nodes());
        if (items(gone.GetOwned()).empty()) {
            gone.Remove();
        }
    }
}

} // namespace

RandomShape shape_of_seed(unsigned seed, int nodes) {
    std::mt19937 random(seed * 7919 + 13);
    RandomShape shape;
    shape.nodes = nodes;
    shape.edges = nodes * (40 + below(random, 160)) / 100;
    shape.inside = below(random, 3) == 0 ? 0 : below(random, 70);
    shape.own_owner = below(random, 101);
    shape.forward = below(random, 4) == 0 ? 100 : below(random, 101);
    shape.self = below(random, 10);
    shape.parallel = below(random, 15);
    shape.hidden = below(random, 2) == 0 ? 0 : below(random, 30);
    shape.odd_size = below(random, 101);
    shape.to_cluster = below(random, 2) == 0 ? 0 : below(random, 20);
    return shape;
}

void grow(TestGraph& g, unsigned seed, const RandomShape& shape) {
    std::mt19937 random(seed);
    for (int i = 0; i < shape.nodes; ++i) {
        const bool nested = i > 0 && chance(random, shape.inside);
        const Node owner = nested ? any_of(random, g.nodes()) : g.root();
        const Node added = g.add_node(owner, "n" + std::to_string(i));
        if (chance(random, shape.odd_size)) {
            give_size(g, random, added);
        }
        if (chance(random, shape.hidden)) {
            Hide(added);
        }
    }
    for (int i = 0; i < shape.edges; ++i) {
        add_random_edge(g, random, shape);
    }
}

void change(TestGraph& g, std::mt19937& random, int steps) {
    for (int i = 0; i < steps && !g.nodes().empty(); ++i) {
        switch (below(random, 8)) {
        case 0:
        case 1:
            add_tied_node(g, random);
            break;
        case 2:
            add_random_edge(g, random, RandomShape());
            break;
        case 3:
        case 4:
            toggle(g, random);
            break;
        case 5:
            fold_or_unfold(g, random);
            break;
        case 6:
            remove_something(g, random);
            break;
        default:
            give_size(g, random, any_of(random, g.nodes()));
        }
    }
}

} // namespace nurvex7::testing_support
