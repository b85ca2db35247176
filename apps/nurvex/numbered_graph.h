#pragma once

#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"

#include <map>
#include <string>

namespace nurvex {

/// A graph whose nodes are known by their ids in the text that it was loaded from.
class NumberedGraph {
public:
    /// Duty    the graph has just been loaded from that text, and the text has no faults
    NumberedGraph(nurvex7::graph_ptr2<nurvex7::Graph> loaded, const std::string& text);

    const nurvex7::graph_ptr2<nurvex7::Graph>& GetGraph() const { return graph; }

    /// The node of an id, or null.
    const nurvex7::Node* Find(int file_id) const;
    /// The id of a node; 0 for the root.
    int FileIdOf(const nurvex7::Node& node) const;

    /// Duty    the id is free
    nurvex7::Node Add(int file_id, const std::string& caption, nurvex7::Node owner);
    /// Removes a node with all that it owns; their ids are free then.
    void Remove(int file_id);

private:
    nurvex7::graph_ptr2<nurvex7::Graph> graph;
    std::map<int, nurvex7::Node> nodes; ///< by id in the file
    std::map<int, int> file_ids;        ///< by id of the node
};

} // namespace nurvex
