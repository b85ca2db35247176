#include "nurvex7/model/topology.h"

#include <utility>

namespace nurvex7 {

int DummyNodeImpl::current_id = -1;

DummyNodeImpl::DummyNodeImpl(graph_ptr<edge_impl_vector> edge)
    : id(current_id--), edge_set(std::move(edge)) {}

int DummyNodeImpl::get_id() const {
    return id;
}

std::string DummyNodeImpl::get_caption() const {
    return std::string();
}

void DummyNodeImpl::set_caption(const std::string&) {}

int DummyNodeImpl::get_tag() const {
    return 0;
}

void DummyNodeImpl::set_tag(const int&) {}

int DummyNodeImpl::get_condition() const {
    return condition;
}

void DummyNodeImpl::set_condition(int flags) {
    condition = flags;
}

graph_ptr<node_impl_set> DummyNodeImpl::get_parents() {
    return new node_impl_vector;
}

graph_ptr<node_impl_set> DummyNodeImpl::get_children() {
    return new node_impl_vector;
}

graph_ptr<edge_impl_set> DummyNodeImpl::get_edges_in() {
    return edge_set;
}

graph_ptr<edge_impl_set> DummyNodeImpl::get_edges_out() {
    return edge_set;
}

graph_ptr<IEdgeImpl> DummyNodeImpl::link_to(graph_ptr<INodeImpl>) {
    return graph_ptr<IEdgeImpl>();
}

graph_ptr<INodeImpl> DummyNodeImpl::add_node() {
    return graph_ptr<INodeImpl>();
}

void DummyNodeImpl::remove() {}

graph_ptr<INodeImpl> DummyNodeImpl::get_owner() const {
    return graph_ptr<INodeImpl>();
}

graph_ptr<node_impl_set> DummyNodeImpl::get_owned() {
    return new node_impl_vector;
}

void DummyNodeImpl::set_owner(graph_ptr<INodeImpl>) {}

bool DummyNodeImpl::has_owner() const {
    return false;
}

} // namespace nurvex7
