// Lays a text graph out by the library, over and over and each time on a fresh graph, as
// bench/limit does it on plain arrays.

#include "bench/limit/flat_graph.h"
#include "bench/measured_runs.h"
#include "nurvex7/nurvex7.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using namespace nurvex7;

/// Nodes are as large as their file says; the nodes of a graph get their ids one after the other.
class FileSizeHandler : public INodeHandler {
public:
    FileSizeHandler(const limit::FlatGraph& of, int first_id) : sizes(of), first(first_id) {}

    void Draw(Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(Node node) override {
        const auto at = static_cast<std::size_t>(node.GetID() - first);
        return {sizes.widths[at], sizes.heights[at]};
    }
    SizeAndOrigin GetSize(Node, tamsel7::size<double> inner) override { return {inner, {}}; }

private:
    const limit::FlatGraph& sizes;
    int first;
};

class ThinEdgeHandler : public IEdgeHandler {
public:
    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge) const override { return 1; }
};

/// A graph with a layout of its own, which it does not own: the tables of the layout hold nodes.
class LaidOutGraph {
public:
    LaidOutGraph(const std::string& file, const limit::FlatGraph& sizes) {
        std::ifstream in(file);
        if (!in || Load(graph, in) == 0) {
            throw std::runtime_error(file + " is no text graph");
        }
        const Node first = graph->GetRoot().GetOwned().GetItem(0);
        graph->SetDefaultNodeHandler(
            graph_ptr2<INodeHandler>(new FileSizeHandler(sizes, first.GetID()), /*owns=*/true));
        graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(new ThinEdgeHandler, /*owns=*/true));
        graph->SetDefaultLayout(graph_ptr2<ILayout>(layout.get(), /*owns=*/false));
    }

    void Make() { layout->Make(graph->GetRoot()); }
    void Dump(const limit::FlatGraph& file) const;

private:
    std::unique_ptr<IncLayout> layout = std::make_unique<IncLayout>();
    graph_ptr2<Graph> graph{new Graph, /*owns=*/true};
};

void LaidOutGraph::Dump(const limit::FlatGraph& file) const {
    const Node root = graph->GetRoot();
    NodeSet nodes = root.GetOwned();
    std::vector<Edge> edges;
    for (int i = 0; i < nodes.GetCount(); ++i) {
        const Node node = nodes.GetItem(i);
        const tamsel7::point<double> position = node.GetPosition();
        measured_runs::PrintNode(file.ids[static_cast<std::size_t>(i)], position.x, position.y);
        EdgeSet leaving = node.GetEdgesOut();
        for (int k = 0; k < leaving.GetCount(); ++k) {
            edges.push_back(leaving.GetItem(k));
        }
    }
    std::sort(edges.begin(), edges.end());
    for (std::size_t number = 1; number <= edges.size(); ++number) {
        std::vector<tamsel7::point<double>> route;
        NodeSet bends = edges[number - 1].GetBreakNodesIn(root);
        for (int i = 0; i < bends.GetCount(); ++i) {
            route.push_back(bends.GetItem(i).GetPosition());
        }
        measured_runs::PrintRoute(number, route);
    }
    measured_runs::PrintSize(root.GetSize().width, root.GetSize().height);
}

} // namespace

int main(int count, char** words) {
    return measured_runs::run(count, words, [](const measured_runs::Options& options) {
        limit::FlatGraph file = limit::ReadFlatGraph(options.graph, options.sizes);
        std::vector<limit::FlatEdge>().swap(file.edges); // only the sizes are of use here
        return [name = options.graph, sizes = std::move(file)](bool dumps) {
            LaidOutGraph graph(name, sizes);
            const double time = measured_runs::milliseconds_of([&] { graph.Make(); });
            if (dumps) {
                graph.Dump(sizes);
            }
            return time;
        };
    });
}
