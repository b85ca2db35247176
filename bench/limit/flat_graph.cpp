#include "bench/limit/flat_graph.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <unordered_map>

namespace limit {

namespace {

/// What the file calls a node, and its number here.
using numbers_t = std::unordered_map<int, index_t>;

std::ifstream open_to_read(const std::string& name) {
    std::ifstream in(name);
    if (!in) {
        throw std::runtime_error(name + " cannot be read");
    }
    return in;
}

index_t number_of(const numbers_t& numbers, int id, const std::string& file) {
    const auto found = numbers.find(id);
    if (found == numbers.end()) {
        throw std::runtime_error(file + ": there is no node " + std::to_string(id));
    }
    return found->second;
}

/// The last number of a node's line is its owner, and 0 is the root.
bool has_owner(const std::string& line) {
    const std::size_t quote = line.rfind('"');
    int type = 0;
    int owner = 0;
    return quote != std::string::npos &&
           std::sscanf(line.c_str() + quote + 1, "%d %d", &type, &owner) == 2 && owner != 0;
}

class Reader {
public:
    Reader(const std::string& graph_file, const std::string& sizes_file)
        : graph_name(graph_file), sizes_name(sizes_file) {}

    FlatGraph Read() {
        read_graph();
        read_sizes();
        return graph;
    }

private:
    void read_graph() {
        std::ifstream in = open_to_read(graph_name);
        std::string section;
        std::string line;
        std::getline(in, line); // the title
        while (std::getline(in, line)) {
            if (line.starts_with('[')) {
                section = line;
            } else if (section == "[nodes]" || section == "[clusters]") {
                take_node(line);
            } else if (section == "[edges]") {
                take_edge(line);
            }
        }
    }

    void take_node(const std::string& line) {
        int id = 0;
        if (std::sscanf(line.c_str(), "%d", &id) != 1) {
            return;
        }
        if (has_owner(line)) {
            throw std::runtime_error(graph_name + ": has clusters");
        }
        numbers.emplace(id, count_of(graph.ids));
        graph.ids.push_back(id);
    }

    void take_edge(const std::string& line) {
        int from = 0;
        int to = 0;
        if (std::sscanf(line.c_str(), "%d %d", &from, &to) == 2) {
            graph.edges.push_back(
                {number_of(numbers, from, graph_name), number_of(numbers, to, graph_name)});
        }
    }

    void read_sizes() {
        graph.widths.assign(graph.ids.size(), -1);
        graph.heights.assign(graph.ids.size(), -1);
        std::ifstream in = open_to_read(sizes_name);
        int id = 0;
        double width = 0;
        double height = 0;
        while (in >> id >> width >> height) {
            const index_t node = number_of(numbers, id, sizes_name);
            graph.widths[node] = width;
            graph.heights[node] = height;
        }
        if (std::count(graph.widths.begin(), graph.widths.end(), -1) > 0) {
            throw std::runtime_error(sizes_name + ": has not a line for each node");
        }
    }

    std::string graph_name;
    std::string sizes_name;
    FlatGraph graph;
    numbers_t numbers;
};

} // namespace

FlatGraph ReadFlatGraph(const std::string& graph_file, const std::string& sizes_file) {
    return Reader(graph_file, sizes_file).Read();
}

void Adjacency::Build(const FlatGraph& graph, Side side) {
    const auto here = [side](const FlatEdge& e) { return side == Side::OUT ? e.from : e.to; };
    const auto there = [side](const FlatEdge& e) { return side == Side::OUT ? e.to : e.from; };
    start.assign(graph.GetCount() + 1, 0);
    for (const FlatEdge& edge : graph.edges) {
        ++start[here(edge) + 1];
    }
    for (index_t node = 0; node < graph.GetCount(); ++node) {
        start[node + 1] += start[node];
    }
    links.resize(graph.edges.size());
    std::vector<index_t> next(start.begin(), start.end() - 1);
    for (index_t edge = 0; edge < count_of(graph.edges); ++edge) {
        links[next[here(graph.edges[edge])]++] = {there(graph.edges[edge]), edge};
    }
    const auto by_node = [](const Link& a, const Link& b) {
        return a.node != b.node ? a.node < b.node : a.edge < b.edge;
    };
    for (index_t node = 0; node < graph.GetCount(); ++node) {
        std::sort(links.begin() + start[node], links.begin() + start[node + 1], by_node);
    }
}

} // namespace limit
