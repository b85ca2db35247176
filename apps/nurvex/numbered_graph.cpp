#include "apps/nurvex/numbered_graph.h"

#include "nurvex7/model/queries.h"
#include "nurvex7/model/text_graph.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <utility>
#include <vector>

namespace nurvex {

using namespace nurvex7;

namespace {

std::vector<int> ids_in_file_order(const std::string& text) {
    std::vector<int> ids;
    std::istringstream in(text);
    TextSection section = TextSection::TYPES;
    std::string line;
    std::getline(in, line); // the title
    while (std::getline(in, line)) {
        const bool header = ReadSectionHeader(line, section);
        if (!header && (section == TextSection::NODES || section == TextSection::CLUSTERS)) {
            const int id = ReadNodeLine(line).id;
            if (id != -1) {
                ids.push_back(id);
            }
        }
    }
    return ids;
}

std::vector<Node> all_inside(const Node& top, bool include_self) {
    std::vector<Node> nodes;
    ForEachNodeIn(
        top, [&nodes](const Node& node) { nodes.push_back(node); }, /*post_order=*/false,
        include_self);
    return nodes;
}

void remove_edges_of(const Node& node) {
    std::vector<Edge> edges;
    for (EdgeSet side : {node.GetEdgesOut(), node.GetEdgesIn()}) {
        for (int i = 0; i < side.GetCount(); ++i) {
            edges.push_back(side.GetItem(i));
        }
    }
    for (Edge& edge : edges) {
        edge.Remove();
    }
}

} // namespace

// Loading makes one node for each line, in the order of the lines, and nodes get ascending ids.
NumberedGraph::NumberedGraph(graph_ptr2<Graph> loaded, const std::string& text) : graph(loaded) {
    std::vector<Node> made = all_inside(graph->GetRoot(), /*include_self=*/false);
    std::vector<std::size_t> order(made.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::sort(order.begin(), order.end(),
              [&made](std::size_t a, std::size_t b) { return made[a] < made[b]; });
    const std::vector<int> ids = ids_in_file_order(text);
    for (std::size_t i = 0; i < std::min(ids.size(), order.size()); ++i) {
        const Node& node = made[order[i]];
        nodes.emplace(ids[i], node);
        file_ids.emplace(node.GetID(), ids[i]);
    }
}

const Node* NumberedGraph::Find(int file_id) const {
    const auto found = nodes.find(file_id);
    return found != nodes.end() ? &found->second : nullptr;
}

int NumberedGraph::FileIdOf(const Node& node) const {
    const auto found = file_ids.find(node.GetID());
    return found != file_ids.end() ? found->second : 0;
}

Node NumberedGraph::Add(int file_id, const std::string& caption, Node owner) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    nodes.emplace(file_id, node);
    file_ids.emplace(node.GetID(), file_id);
    return node;
}

// The edges go first: a removed node would stay among the neighbours of those it was joined to.
void NumberedGraph::Remove(int file_id) {
    Node top = nodes.at(file_id);
    for (const Node& gone : all_inside(top, /*include_self=*/true)) {
        remove_edges_of(gone);
        nodes.erase(FileIdOf(gone));
        file_ids.erase(gone.GetID());
    }
    top.Remove();
}

} // namespace nurvex
