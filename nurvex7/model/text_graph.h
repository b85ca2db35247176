#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/graph.h"

#include <istream>
#include <string>

namespace nurvex7 {

/// Replaces the content of a graph with what a sectioned text stream describes.
///
/// 1 on success; 0 where an edge or an owner names a node that is not there, and the graph is empty
/// then. The first line is the writer's own and skipped. Nodes with "Thread" in their caption
/// switch to the thread view: everything is hidden but these nodes, their children, and the
/// children of each first child with "main" in its caption, from step to step.
///
/// Order   an owner may come later in the file, the ends of an edge come before it
/// Keeps   handlers, default layout and queues of the graph
/// Queues  nothing: queue MakeLayout on the root afterwards
/// Duty    no cycle among nodes with "main" in their caption below a "Thread" node: the thread view
///         would follow it for ever
NURVEX7_API int Load(graph_ptr2<Graph> graph, std::istream& in);

/// The sections of a text graph.
enum class TextSection { TYPES, NODES, CLUSTERS, EDGES };

/// True where the whole line is a section header; tells the section then.
NURVEX7_API bool ReadSectionHeader(const std::string& line, TextSection& section);

/// A line of a node section: `12 "caption" 3 7`.
struct NodeLine {
    int id = -1;
    std::string caption;
    int type = -1;
    int owner = -1;
};

/// A line of the edge section: `12 7 "caption"`.
struct EdgeLine {
    int from = -1;
    int to = -1;
    std::string caption;
};

/// Splits a line at its first and last double quote and reads its fields. A field that is missing
/// keeps -1; a malformed number gives 0 and the next one stays -1; an overflow gives the limit.
NURVEX7_API NodeLine ReadNodeLine(const std::string& line);
NURVEX7_API EdgeLine ReadEdgeLine(const std::string& line);

} // namespace nurvex7
