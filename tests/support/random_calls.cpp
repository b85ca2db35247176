#include "tests/support/random_calls.h"

#include "nurvex7/model/queries.h"
#include "tests/support/plain_queries.h"

#include <array>
#include <cfloat>
#include <cstdio>
#include <limits>
#include <utility>

namespace nurvex7::testing_support {

namespace {

constexpr std::size_t MOST_KEPT = 40; // of what is kept only to be read again

/// Sizes that differ from node to node, some without any sense.
class OddNodeHandler : public INodeHandler {
public:
    void Draw(Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(Node node) override {
        const int id = node.GetID();
        return {id % 7 * 13.0, id % 11 == 0 ? -30.0 : id % 5 * 9.0};
    }
    SizeAndOrigin GetSize(Node, tamsel7::size<double> inner) override { return {inner, {}}; }
};

class OddEdgeHandler : public IEdgeHandler {
public:
    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge edge) const override { return edge.GetID() % 6 - 1.0; }
};

template <typename T>
void keep_few(std::vector<T>& kept) {
    if (kept.size() > MOST_KEPT) {
        kept.pop_back();
    }
}

} // namespace

RandomCalls::RandomCalls(unsigned seed)
    : random(seed * 2654435761U + 1), wildness(seed % 3 == 0 ? 20 : 0),
      most_nodes(std::array<std::size_t, 4>{4, 12, 30, 80}[seed % 4]),
      foreignness(seed % 5 == 0 ? 10 : 0), node_handler(new OddNodeHandler),
      edge_handler(new OddEdgeHandler), graphs(2) {
    for (int i = 0; i < 3; ++i) {
        layouts.push_back(std::make_unique<IncLayout>());
        inits.push_back(1);
    }
    layouts.push_back(std::make_unique<DerivedLayout>());
    inits.push_back(1);
    for (std::size_t i = 0; i < graphs.size(); ++i) {
        replace_graph(i);
    }
}

// A storage that was taken from its graph keeps its nodes, and they keep their owners.
RandomCalls::~RandomCalls() {
    for (Node& old : old_roots) {
        old.Remove();
    }
}

const std::vector<RandomCalls::Call>& RandomCalls::calls() {
    static const std::vector<Call> all = [] {
        std::vector<Call> table = structure_calls();
        for (const std::vector<Call>& more : {visual_calls(), layout_calls()}) {
            table.insert(table.end(), more.begin(), more.end());
        }
        return table;
    }();
    return all;
}

void RandomCalls::make(int count, bool traced) {
    int weights = 0;
    for (const Call& call : calls()) {
        weights += call.weight;
    }
    for (int made = 0; made < count; ++made) {
        int drawn = below(weights);
        auto call = calls().begin();
        while (drawn >= call->weight) {
            drawn -= call->weight;
            ++call;
        }
        if (traced) {
            std::fprintf(stderr, "%d %s\n", made, call->name);
        }
        (this->*call->make)();
    }
}

std::string RandomCalls::find_fault() const {
    if (!fault.empty()) {
        return fault;
    }
    for (const graph_ptr2<Graph>& g : graphs) {
        std::vector<Node> open{g->GetRoot()};
        while (!open.empty()) {
            const Node owner = open.back();
            open.pop_back();
            for (const Node& owned : items(owner.GetOwned())) {
                if (owned.IsDummy() || owned.GetOwner() != owner) {
                    return std::to_string(owned.GetID()) + " is owned, but knows another owner";
                }
                open.push_back(owned);
            }
        }
    }
    return std::string();
}

int RandomCalls::below(int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

bool RandomCalls::chance(int percent) {
    return below(100) < percent;
}

double RandomCalls::number() {
    if (!chance(wildness)) {
        return below(3000) / 3.0 - 200;
    }
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();
    constexpr std::array<double, 12> wild{0,       -0.0,    -1,       1e-300,    1e300, -1e300,
                                          DBL_MAX, DBL_MIN, INFINITE, -INFINITE, -1e9,  NO_NUMBER};
    return wild[static_cast<std::size_t>(below(static_cast<int>(wild.size())))];
}

graph_ptr2<Graph>& RandomCalls::graph() {
    return graphs[static_cast<std::size_t>(below(static_cast<int>(graphs.size())))];
}

// Removed nodes are sorted out when they come to hand; where none is left, one is made.
Node RandomCalls::node() {
    while (!nodes.empty()) {
        const int last = static_cast<int>(nodes.size()) - 1;
        const std::size_t at = static_cast<std::size_t>(below(last + 1));
        Node found = nodes[at];
        if (!found.IsDummy()) {
            return found;
        }
        std::swap(nodes[at], nodes.back());
        nodes.pop_back();
        removed.insert(removed.begin(), found);
        keep_few(removed);
    }
    keep(root().AddNode());
    return nodes.back();
}

Node RandomCalls::node_or_root() {
    return chance(15) ? root() : node();
}

Node RandomCalls::any_kind_of_node() {
    const std::optional<Node> found = chance(10) ? bend() : std::nullopt;
    return found ? *found : node_or_root();
}

std::optional<Edge> RandomCalls::edge() {
    while (!edges.empty()) {
        const int count = static_cast<int>(edges.size());
        std::swap(edges[static_cast<std::size_t>(below(count))], edges.back());
        if (edges.back().From().get_impl().get() != nullptr) {
            return edges.back();
        }
        edges.pop_back();
    }
    return std::nullopt;
}

std::optional<Node> RandomCalls::bend() {
    if (const std::optional<Edge> e = edge()) {
        for (const Node& found : items(e->GetBreakNodes())) {
            bends.insert(bends.begin(), found);
            keep_few(bends);
        }
    }
    if (bends.empty()) {
        return std::nullopt;
    }
    return bends[static_cast<std::size_t>(below(static_cast<int>(bends.size())))];
}

ILayout& RandomCalls::layout() {
    if (chance(10)) {
        return *GetDefaultLayout();
    }
    return *layouts[static_cast<std::size_t>(below(static_cast<int>(layouts.size())))];
}

graph_ptr2<ILayout> RandomCalls::layout_handle() {
    return graph_ptr2<ILayout>(&layout(), /*owns=*/false);
}

void RandomCalls::keep(const Node& made) {
    nodes.push_back(made);
}

// After a call that made nodes on its own.
void RandomCalls::gather_nodes() {
    nodes.clear();
    edges.clear();
    for (const graph_ptr2<Graph>& g : graphs) {
        std::vector<Node> found;
        ForEachNodeIn(
            g->GetRoot(), [&found](const Node& n) { found.push_back(n); }, false, false);
        for (const Node& n : found) {
            keep(n);
            for (const Edge& e : items(n.GetEdgesOut())) {
                edges.push_back(e);
            }
        }
    }
}

// Graphs start with a layout of their own each, as the caller's duty is; most seeds leave it so.
void RandomCalls::replace_graph(std::size_t place) {
    graphs[place] = graph_ptr2<Graph>(new Graph, /*owns=*/true);
    graphs[place]->SetDefaultLayout(graph_ptr2<ILayout>(layouts[place].get(), /*owns=*/false));
}

} // namespace nurvex7::testing_support
