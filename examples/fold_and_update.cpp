// Folding hides the neighbours of a node; unfolding brings them back. What stays in the drawing
// keeps its level and its order, and only what is new is fitted in.
#include "nurvex7/nurvex7.h"

#include <cstdio>
#include <vector>

namespace {

void print(const char* when, const std::vector<nurvex7::Node>& nodes) {
    std::printf("%s\n", when);
    for (const nurvex7::Node& node : nodes) {
        const bool hidden = nurvex7::IsFlagSet(node, nurvex7::NODE_HIDDEN);
        const tamsel7::point<double> p = node.GetPosition();
        std::printf("  %-5s %s", node.GetCaption().c_str(), hidden ? "hidden\n" : "");
        if (!hidden) {
            std::printf("%g, %g%s\n", p.x, p.y,
                        nurvex7::IsFlagSet(node, nurvex7::NODE_NEW) ? ", new" : "");
        }
    }
}

} // namespace

int main() {
    const nurvex7::graph_ptr2<nurvex7::Graph> graph(new nurvex7::Graph, /*owns=*/true);
    std::vector<nurvex7::Node> nodes;
    for (const char* caption : {"shell", "cat", "sort", "uniq", "file"}) {
        nodes.push_back(graph->GetRoot().AddNode());
        nodes.back().SetCaption(caption);
    }
    nurvex7::Node shell = nodes[0];
    for (int i = 1; i <= 3; ++i) {
        shell.LinkTo(nodes[static_cast<std::size_t>(i)]);
    }
    nodes[1].LinkTo(nodes[4]);
    graph->RecalculateLayout(nullptr);
    print("drawn", nodes);

    nurvex7::Fold(shell, nurvex7::FOLD_CHILDREN); // queues an update of shell's owner
    graph->RecalculateLayout(nullptr);
    print("folded", nodes);

    nurvex7::Unfold(shell, nurvex7::FOLD_CHILDREN);
    graph->RecalculateLayout(nullptr);
    print("unfolded", nodes);
}
