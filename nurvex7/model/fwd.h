#pragma once

/// The names of the model, for contracts that pass its values on without opening them.
namespace nurvex7 {

class INodeImpl;
class IEdgeImpl;
class IGraphStorage;
class BreakNodes;
class INodeVis;
class IEdgeVis;
class IGraphVis;
class DefaultNodeVis;
class DefaultEdgeVis;
class DefaultGraphVis;
class Node;
class Edge;
class NodeSet;
class EdgeSet;
class Graph;
class KeptStructure;
struct NodeEdgePair;

} // namespace nurvex7
