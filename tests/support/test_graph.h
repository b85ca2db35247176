#pragma once

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/graph.h"

#include <map>
#include <string>
#include <vector>

namespace nurvex7::testing_support {

/// Gives every node 60 x 20 unless it was told another size.
class SizedNodeHandler : public INodeHandler {
public:
    void Draw(Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(Node node) override;
    SizeAndOrigin GetSize(Node, tamsel7::size<double> inner) override { return {inner, {}}; }

    std::map<int, tamsel7::size<double>> sizes;
};

/// Gives every edge the width 1 unless it was told another.
class WideEdgeHandler : public IEdgeHandler {
public:
    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge edge) const override;

    std::map<int, double> widths;
};

/// A graph with a layout of its own, told in words and addressed by captions.
class TestGraph {
public:
    /// The words, in order: `a` a node, `C/a` a node inside C, `a>b` an edge (its ends may be such
    /// paths, and are made where they are new), `a:40x30` a node with a size, `a>b:3` an edge with
    /// a width, `!a` a hidden node. The layout is an IncLayout of its own.
    explicit TestGraph(const std::string& words = "");
    TestGraph(const TestGraph&) = delete;
    TestGraph& operator=(const TestGraph&) = delete;

    void add(const std::string& words);
    Node add_node(Node owner, const std::string& caption);
    Edge add_edge(Node from, Node to);

    Node root() const { return graph->GetRoot(); }
    Node node(const std::string& caption) const;
    /// The nth edge `a>b`, in the order in which they were added.
    Edge edge(const std::string& caption, std::size_t nth = 0) const;
    /// All that are in the graph, in the order in which they were added.
    std::vector<Node> nodes() const;
    std::vector<Edge> edges() const;

    void use_layout(ILayout& other) {
        graph->SetDefaultLayout(graph_ptr2<ILayout>(&other, /*owns=*/false));
    }
    /// Runs what is queued.
    void recalculate();
    void make();
    void update(Node owner);
    void resize(Node owner);

    // The graph does not own its layout: the tables of a layout hold nodes, and with them the
    // visual store, so that a store that owned the layout would keep itself alive.
    IncLayout layout;
    SizedNodeHandler node_handler;
    WideEdgeHandler edge_handler;
    graph_ptr2<Graph> graph;

private:
    Node node_of_path(const std::string& path);

    std::vector<Node> added_nodes;
    std::vector<Edge> added_edges;
};

/// The caption of a node; for a break node, the caption of its edge.
std::string name_of(const Node& node);

} // namespace nurvex7::testing_support
