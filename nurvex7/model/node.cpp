#include "nurvex7/model/node.h"

#include "nurvex7/model/queries.h"

#include <utility>

namespace nurvex7 {

Node::Node(graph_ptr<IGraphVis> store, graph_ptr<INodeImpl> node)
    : vis(std::move(store)), impl(std::move(node)) {}

Node& Node::operator=(const Node& other) {
    if (GetID() != other.GetID()) {
        vis = other.vis;
        impl = other.impl;
    }
    return *this;
}

NodeSet Node::GetParents() const {
    return NodeSet(vis, impl->get_parents());
}

NodeSet Node::GetChildren() const {
    return NodeSet(vis, impl->get_children());
}

NodeSet Node::GetOwned() const {
    return NodeSet(vis, impl->get_owned());
}

EdgeSet Node::GetEdgesIn() const {
    return EdgeSet(vis, impl->get_edges_in());
}

EdgeSet Node::GetEdgesOut() const {
    return EdgeSet(vis, impl->get_edges_out());
}

Node Node::GetOwner() const {
    return Node(vis, impl->get_owner());
}

Node Node::AddNode() {
    return Node(vis, impl->add_node());
}

Edge Node::LinkTo(Node target) {
    return Edge(vis, impl->link_to(target.impl));
}

void Node::SetOwner(Node owner) {
    impl->set_owner(owner.impl);
}

void Node::Remove() {
    vis->remove_node_vis(impl);
    impl->remove();
}

void Node::SetSize(const tamsel7::size<double>& value) {
    if (DefaultNodeVis* const known = known_vis_in(vis.get(), *impl)) {
        known->set_size(value);
    } else {
        vis->get_node_vis(impl)->set_size(value);
    }
}

graph_ptr2<ILayout> Node::GetLayout() const {
    return vis->get_node_layout(impl);
}

void Node::SetLayout(graph_ptr2<ILayout> layout) {
    vis->set_node_layout(impl, layout);
}

graph_ptr2<INodeHandler> Node::GetHandler() const {
    return vis->get_node_painter(impl);
}

void Node::SetHandler(graph_ptr2<INodeHandler> handler) {
    vis->set_node_painter(impl, handler);
}

void Node::MakeLayout() {
    vis->add_to_make_list(impl);
}

void Node::UpdateLayout() {
    vis->add_to_update_list(impl);
}

void Node::ResizeSelf() {
    vis->add_to_resize_list(impl);
}

void Node::ResizeAll() {
    ForEachNodeIn(
        *this, [](Node node) { node.ResizeSelf(); }, false, true);
}

Edge::Edge(graph_ptr<IGraphVis> store, graph_ptr<IEdgeImpl> edge)
    : vis(std::move(store)), impl(std::move(edge)) {}

Node Edge::From() const {
    return Node(vis, impl->from());
}

Node Edge::To() const {
    return Node(vis, impl->to());
}

graph_ptr2<IEdgeHandler> Edge::GetHandler() const {
    return vis->get_default_edge_painter();
}

NodeSet Edge::GetBreakNodes() const {
    return NodeSet(vis, vis->get_edge_vis(impl)->get_break_nodes());
}

NodeSet Edge::GetBreakNodesIn(const Node& owner) const {
    return NodeSet(vis, vis->get_edge_vis(impl)->get_break_nodes_in(owner.GetID()));
}

graph_ptr<node_impl_set> Edge::FindBreakNodesIn(const Node& owner) const {
    return vis->get_edge_vis(impl)->find_break_nodes_in(owner.GetID());
}

void Edge::AddBreakNodesIn(const Node& owner, int count) {
    vis->get_edge_vis(impl)->add_break_nodes_in(owner.GetID(), count);
}

void Edge::RemoveBreakNodesIn(const Node& owner) {
    vis->get_edge_vis(impl)->remove_break_nodes_in(owner.GetID());
}

void Edge::RemoveBreakNodes() {
    vis->get_edge_vis(impl)->remove_break_nodes();
}

void Edge::Remove() {
    RemoveBreakNodes();
    vis->remove_edge_vis(impl);
    impl->remove();
}

NodeSet::NodeSet(graph_ptr<IGraphVis> store, graph_ptr<node_impl_set> set)
    : inner(std::move(set)), vis(std::move(store)) {}

NodeSet::~NodeSet() = default;

EdgeSet::EdgeSet(graph_ptr<IGraphVis> store, graph_ptr<edge_impl_set> set)
    : inner(std::move(set)), vis(std::move(store)) {}

EdgeSet::~EdgeSet() = default;

// A graph whose default layout was taken away leaves its nodes as they are.
void _make_layout(Node node) {
    const graph_ptr2<ILayout> layout = node.GetLayout();
    if (layout.get() != nullptr) {
        layout->Make(node);
    }
}

void _update_layout(Node node) {
    const graph_ptr2<ILayout> layout = node.GetLayout();
    if (layout.get() != nullptr) {
        layout->Update(node);
    }
}

void _apply_resize_all(Node node) {
    node.ResizeAll();
}

void _remove_break_nodes(Edge edge) {
    edge.RemoveBreakNodes();
}

} // namespace nurvex7
