// Reads a text graph, has it laid out and prints how large the drawing is.
#include "nurvex7/nurvex7.h"

#include <cstdio>
#include <fstream>

namespace {

struct Count {
    int nodes = 0;
    int shown = 0;
    void operator()(const nurvex7::Node& node) {
        ++nodes;
        shown += nurvex7::IsFlagSet(node, nurvex7::NODE_DRAWN) ? 1 : 0;
    }
};

} // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::fprintf(stderr, "usage: example_load_text FILE\n");
        return 2;
    }
    std::ifstream in(words[1]);
    const nurvex7::graph_ptr2<nurvex7::Graph> graph(new nurvex7::Graph, /*owns=*/true);
    if (!in || nurvex7::Load(graph, in) == 0) {
        std::fprintf(stderr, "%s is no text graph\n", words[1]);
        return 1;
    }
    graph->RecalculateLayout(nullptr);
    nurvex7::MarkDrawnIn(graph);

    const Count found = nurvex7::ForEachNodeIn(graph->GetRoot(), Count(), /*post_order=*/false,
                                               /*include_self=*/false);
    const tamsel7::size<double> extent = graph->GetRoot().GetSize();
    std::printf("%d of %d nodes shown on %g x %g\n", found.shown, found.nodes, extent.width,
                extent.height);
}
