#include "nurvex7/nurvex7.h"

#include <cstdio>
#include <vector>

int main() {
    const nurvex7::graph_ptr2<nurvex7::Graph> graph(new nurvex7::Graph, /*owns=*/true);
    nurvex7::Node root = graph->GetRoot();

    const char* const captions[] = {"read", "parse", "check", "report"};
    std::vector<nurvex7::Node> steps;
    for (const char* caption : captions) {
        steps.push_back(root.AddNode());
        steps.back().SetCaption(caption);
    }
    steps[0].LinkTo(steps[1]);
    steps[1].LinkTo(steps[2]);
    steps[2].LinkTo(steps[3]);
    steps[0].LinkTo(steps[3]); // passes by parse and check

    graph->RecalculateLayout(nullptr); // a new graph has its root queued

    for (const nurvex7::Node& step : steps) {
        const tamsel7::point<double> corner = step.GetPosition();
        std::printf("%-6s at %g, %g\n", step.GetCaption().c_str(), corner.x, corner.y);
    }
}
