// What a node, an edge and a bend hold of the heap, in bytes, as a table in Markdown. The overhead
// of the allocator is part of it.

#include "nurvex7/nurvex7.h"

#include <cstddef>
#include <cstdio>
#include <malloc.h>
#include <memory>
#include <string>
#include <vector>

#include "families.h"

namespace {

using namespace nurvex7;

constexpr std::size_t COUNT = 100'000;
constexpr int BENDS = 10;

double held() {
    const auto heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

/// Tells how much more is held after `f`, for each of so many things.
void report(const char* what, std::size_t things, auto f) {
    const double before = held();
    f();
    std::printf("| %s | %.0f |\n", what, (held() - before) / static_cast<double>(things));
}

std::size_t count_bends(const std::vector<Node>& nodes, const Node& root) {
    std::size_t bends = 0;
    for (const Node& node : nodes) {
        EdgeSet leaving = node.GetEdgesOut();
        for (int i = 0; i < leaving.GetCount(); ++i) {
            bends += static_cast<std::size_t>(leaving.GetItem(i).GetBreakNodesIn(root).GetCount());
        }
    }
    return bends;
}

void report_parts() {
    families::Bench b;
    Node root = b.graph->GetRoot();
    std::vector<Node> nodes;
    std::vector<Edge> edges;
    nodes.reserve(COUNT);
    edges.reserve(COUNT);
    report("a node", COUNT, [&] { nodes = families::add_nodes(root, COUNT); });
    report("its place and its size", COUNT, [&] {
        for (Node& node : nodes) {
            node.SetPosition(1, 2);
            node.SetSize({60, 20});
        }
    });
    report("an edge", COUNT - 1, [&] {
        for (std::size_t i = 1; i < COUNT; ++i) {
            edges.push_back(nodes[i - 1].LinkTo(nodes[i]));
        }
    });
    report("a break node, with its place", COUNT * BENDS, [&] {
        for (Edge& edge : edges) {
            edge.AddBreakNodesIn(root, BENDS);
            NodeSet bends = edge.GetBreakNodesIn(root);
            for (int i = 0; i < BENDS; ++i) {
                bends.GetItem(i).SetPosition(1, 2);
            }
        }
    });
}

void report_layout() {
    families::Bench b = families::sparse(COUNT);
    report("Make of a sparse graph, for each node", COUNT, [&] { b.Make(); });
    NodeSet owned = b.graph->GetRoot().GetOwned();
    std::vector<Node> nodes;
    for (int i = 0; i < owned.GetCount(); ++i) {
        nodes.push_back(owned.GetItem(i));
    }
    const auto bends = static_cast<double>(count_bends(nodes, b.graph->GetRoot()));
    std::printf("\nThis graph has 1.5 edges and %.1f break nodes for each node.\n",
                bends / static_cast<double>(COUNT));
}

} // namespace

int main() {
    std::printf("| held by | bytes |\n| --- | ---: |\n");
    report_parts();
    report_layout();
}
