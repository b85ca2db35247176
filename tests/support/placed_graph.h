#pragma once

#include "nurvex7/model/graph.h"

#include <string>
#include <vector>

namespace tests {

/// A graph whose nodes and routes a test places by hand, without a layout.
struct PlacedGraph {
    nurvex7::graph_ptr2<nurvex7::Graph> graph{new nurvex7::Graph, /*owns=*/true};

    nurvex7::Node root() const { return graph->GetRoot(); }

    /// A node of a caption at a place.
    nurvex7::Node add(const std::string& caption, tamsel7::rectangle<double> place = {}) const {
        return add_to(root(), caption, place);
    }
    static nurvex7::Node add_to(nurvex7::Node owner, const std::string& caption,
                                tamsel7::rectangle<double> place = {}) {
        nurvex7::Node node = owner.AddNode();
        node.SetCaption(caption);
        node.SetPosition(place.left, place.top);
        node.SetSize({place.right - place.left, place.bottom - place.top});
        return node;
    }

    /// An edge between two nodes of the root whose route runs through the given points.
    nurvex7::Edge link(nurvex7::Node from, nurvex7::Node to,
                       const std::vector<tamsel7::point<double>>& route) const {
        nurvex7::Edge edge = from.LinkTo(to);
        edge.AddBreakNodesIn(root(), static_cast<int>(route.size()));
        nurvex7::NodeSet nodes = edge.GetBreakNodes();
        for (int i = 0; i < nodes.GetCount(); ++i) {
            nodes.GetItem(i).SetPosition(route[static_cast<std::size_t>(i)]);
        }
        return edge;
    }
};

} // namespace tests
