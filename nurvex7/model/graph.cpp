#include "nurvex7/model/graph.h"

#include "nurvex7/model/structure_index.h"

#include <utility>

namespace nurvex7 {

Graph::Graph(graph_ptr<IGraphStorage> given_storage)
    : storage(std::move(given_storage)), vis(new DefaultGraphVis) {
    if (storage.get() == nullptr) {
        storage = new DefaultStorage(new DefaultRootNodeImpl);
    }
    GetRoot().MakeLayout();
}

Graph::~Graph() {
    if (storage.get() != nullptr && storage->get_root().get() != nullptr) {
        GetRoot().Remove();
    }
    // A layout remembers the nodes of its drawings, and each of them holds the store that holds the
    // layout. Kept nodes find no layout from here on; there is nothing left to lay out.
    vis->set_default_layout(graph_ptr2<ILayout>());
    // Nor may a handler that remembers a node hold itself that way. Kept nodes are still answered.
    vis->set_default_node_painter(nurvex7::GetDefaultNodeHandler());
}

Node Graph::GetRoot() const {
    return Node(vis, storage->get_root());
}

// What the root that goes keeps about its nodes would hold the visual store of this graph.
void Graph::SetStorage(graph_ptr<IGraphStorage> given_storage) {
    if (storage.get() != nullptr && storage->get_root().get() != nullptr) {
        StructureIndex::ForgetKept(GetRoot());
    }
    storage = given_storage;
}

void Graph::SetDefaultLayout(graph_ptr2<ILayout> layout) {
    vis->set_default_layout(layout);
}

void Graph::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    vis->set_default_node_painter(handler);
}

void Graph::SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler> handler) {
    vis->set_default_edge_painter(handler);
}

graph_ptr2<INodeHandler> Graph::GetDefaultNodeHandler() {
    return vis->get_default_node_painter();
}

NodeSet Graph::HitNodeTest(double left, double top, double right, double bottom) {
    return NodeSet(vis, vis->test_node_hit(left, top, right, bottom));
}

EdgeSet Graph::HitEdgeTest(double left, double top, double right, double bottom) {
    return EdgeSet(vis, vis->test_edge_hit(left, top, right, bottom));
}

} // namespace nurvex7
