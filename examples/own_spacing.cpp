// A graph with a layout of its own: the same nodes, first with the default spacing, then wide.
#include "nurvex7/nurvex7.h"

#include <cstdio>

namespace {

using nurvex7::Graph;
using nurvex7::graph_ptr2;
using nurvex7::ILayout;
using nurvex7::IncLayout;

/// One node with three children.
void fill(Graph& graph) {
    nurvex7::Node root = graph.GetRoot();
    nurvex7::Node parent = root.AddNode();
    for (int i = 0; i < 3; ++i) {
        parent.LinkTo(root.AddNode());
    }
}

void print_extent(const char* what, Graph& graph) {
    graph.RecalculateLayout(nullptr);
    const tamsel7::size<double> extent = graph.GetRoot().GetSize();
    std::printf("%-7s %g x %g\n", what, extent.width, extent.height);
}

} // namespace

int main() {
    const graph_ptr2<Graph> plain(new Graph, /*owns=*/true);
    fill(*plain);
    print_extent("default", *plain);

    // 100 between levels, 40 between nodes of a level, 4 between tracks, stubs of 10.
    const graph_ptr2<ILayout> wide(new IncLayout(100, 40, 4, 10), /*owns=*/true);
    const graph_ptr2<Graph> graph(new Graph, /*owns=*/true);
    graph->SetDefaultLayout(wide);
    fill(*graph);
    print_extent("wide", *graph);
}
