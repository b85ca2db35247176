#include "tests/support/test_graph.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "tests/support/recording_painter.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace nurvex7::testing_support {

tamsel7::size<double> SizedNodeHandler::GetSize(Node node) {
    const auto told = sizes.find(node.GetID());
    return told != sizes.end() ? told->second : tamsel7::size<double>{60, 20};
}

double WideEdgeHandler::GetWidth(Edge edge) const {
    const auto told = widths.find(edge.GetID());
    return told != widths.end() ? told->second : 1;
}

TestGraph::TestGraph(const std::string& words) : graph(new Graph, /*owns=*/true) {
    graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&node_handler, /*owns=*/false));
    graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(&edge_handler, /*owns=*/false));
    use_layout(layout);
    add(words);
}

void TestGraph::add(const std::string& words) {
    std::istringstream in(words);
    for (std::string word; in >> word;) {
        const std::size_t colon = word.find(':');
        const std::string value = colon == std::string::npos ? "" : word.substr(colon + 1);
        word = word.substr(0, colon);
        const std::size_t arrow = word.find('>');
        if (word[0] == '!') {
            Hide(node_of_path(word.substr(1)));
        } else if (arrow != std::string::npos) {
            const Node from = node_of_path(word.substr(0, arrow));
            const Edge edge = add_edge(from, node_of_path(word.substr(arrow + 1)));
            if (!value.empty()) {
                edge_handler.widths[edge.GetID()] = std::stod(value);
            }
        } else {
            const Node node = node_of_path(word);
            if (!value.empty()) {
                const std::size_t times = value.find('x');
                node_handler.sizes[node.GetID()] = {std::stod(value),
                                                    std::stod(value.substr(times + 1))};
            }
        }
    }
}

Node TestGraph::add_node(Node owner, const std::string& caption) {
    Node added = owner.AddNode();
    added.SetCaption(caption);
    added_nodes.push_back(added);
    return added;
}

Edge TestGraph::add_edge(Node from, Node to) {
    Edge added = from.LinkTo(to);
    added.SetCaption(from.GetCaption() + ">" + to.GetCaption());
    added_edges.push_back(added);
    return added;
}

Node TestGraph::node_of_path(const std::string& path) {
    Node owner = root();
    std::istringstream in(path);
    for (std::string caption; std::getline(in, caption, '/');) {
        const auto found =
            std::find_if(added_nodes.begin(), added_nodes.end(),
                         [&](const Node& known) { return known.GetCaption() == caption; });
        owner = found != added_nodes.end() ? *found : add_node(owner, caption);
    }
    return owner;
}

Node TestGraph::node(const std::string& caption) const {
    for (const Node& known : nodes()) {
        if (known.GetCaption() == caption) {
            return known;
        }
    }
    throw std::invalid_argument("no node " + caption);
}

Edge TestGraph::edge(const std::string& caption, std::size_t nth) const {
    for (const Edge& known : edges()) {
        if (known.GetCaption() == caption && nth-- == 0) {
            return known;
        }
    }
    throw std::invalid_argument("no edge " + caption);
}

std::vector<Node> TestGraph::nodes() const {
    std::vector<Node> present;
    for (const Node& known : added_nodes) {
        if (!known.IsDummy()) {
            present.push_back(known);
        }
    }
    return present;
}

// An edge stays behind in its target when its source is removed, so both ends are looked at.
std::vector<Edge> TestGraph::edges() const {
    std::vector<Edge> present;
    for (const Edge& known : added_edges) {
        const bool linked = known.get_impl()->from().get() != nullptr;
        if (linked && !known.From().IsDummy() && !known.To().IsDummy()) {
            present.push_back(known);
        }
    }
    return present;
}

void TestGraph::recalculate() {
    tests::RecordingPainter painter;
    graph->RecalculateLayout(&painter);
}

void TestGraph::make() {
    root().MakeLayout();
    recalculate();
}

void TestGraph::update(Node owner) {
    owner.UpdateLayout();
    recalculate();
}

void TestGraph::resize(Node owner) {
    owner.ResizeSelf();
    recalculate();
}

std::string name_of(const Node& node) {
    return node.GetID() < 0 ? node.GetEdgesOut().GetItem(0).GetCaption() : node.GetCaption();
}

} // namespace nurvex7::testing_support
