// A layout of one's own: a phase between those of the library. This one starts every level at the
// same height, where the library would centre the nodes on their neighbours.
#include "nurvex7/nurvex7.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using nurvex7::Node;

class TopAligned : public nurvex7::IncLayout {
public:
    TopAligned() {
        // The y are final before the columns are computed. Phases are named through the own class.
        const auto columns =
            std::find(make_phases.begin(), make_phases.end(), &TopAligned::calculate_x_coords);
        make_phases.insert(columns, static_cast<phase_t>(&TopAligned::start_at_the_top));
    }

private:
    void start_at_the_top() {
        for (std::vector<Node>& level : level_nodes) {
            double y = 0;
            for (Node& n : level) {
                n.SetPosition(0, y);
                y += _get_height(n) + gap_of(n);
            }
        }
    }
};

void print(const char* what, nurvex7::Graph& graph) {
    Node root = graph.GetRoot();
    Node hub = root.AddNode();
    for (int i = 0; i < 3; ++i) {
        hub.LinkTo(root.AddNode());
    }
    graph.RecalculateLayout(nullptr);
    std::printf("%s: the hub is %g below the top\n", what, hub.GetPosition().y);
}

} // namespace

int main() {
    nurvex7::Graph plain;
    print("as it comes", plain);

    TopAligned layout; // outlives the graph
    nurvex7::Graph graph;
    graph.SetDefaultLayout(nurvex7::graph_ptr2<nurvex7::ILayout>(&layout, /*owns=*/false));
    print("top aligned", graph);
}
