#include "nurvex7/model/break_nodes.h"

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace nurvex7 {

int DummyNodeImpl::current_id = -1;

DummyNodeImpl::DummyNodeImpl(graph_ptr<edge_impl_vector> edge, BreakNode* in)
    : id(current_id--), edge_set(std::move(edge)), home(in) {}

// Called in place of the destructor: a break node that has been let go stays as long as somebody
// holds its record, which may hand it out again.
void DummyNodeImpl::operator delete(DummyNodeImpl* gone, std::destroying_delete_t) {
    if (gone->home != nullptr) {
        gone->home->end_if_let_go();
    } else {
        std::destroy_at(gone);
        ::operator delete(gone);
    }
}

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

// Break nodes with their records

BreakNode::BreakNode(BreakNodes& all, const graph_ptr<edge_impl_vector>& edge,
                     DefaultGraphVis* store)
    : made_with(&all), node(edge, this), vis(*this, store) {
    node.known_vis = &vis;
}

void BreakNode::end_if_let_go() {
    if (node.ref_count == 0 && vis.ref_count == 0) {
        node.edge_set.reset();
        made_with->lose_one();
    }
}

BreakNodes::BreakNodes(BreakNodeList& of_store, std::size_t how_many)
    : list(&of_store), count(how_many), left(how_many), next(of_store.first) {
    list->first = this;
    if (next != nullptr) {
        next->before = this;
    }
}

BreakNodes::~BreakNodes() {
    if (list == nullptr) {
        return;
    }
    (before != nullptr ? before->next : list->first) = next;
    if (next != nullptr) {
        next->before = before;
    }
}

void BreakNodes::Make(BreakNodeList& list, DefaultGraphVis* store,
                      const graph_ptr<edge_impl_vector>& edge, std::size_t count,
                      node_impl_vector& run) {
    static_assert(alignof(BreakNode) <= alignof(BreakNodes));
    if (run.GetCount() == 0) {
        run.reserve(count); // once more would copy the run each time that it grows by a few
    }
    void* const memory = ::operator new(sizeof(BreakNodes) + count * sizeof(BreakNode));
    auto* const made = ::new (memory) BreakNodes(list, count);
    for (BreakNode* at = made->begin(); at != made->end(); ++at) {
        std::construct_at(at, *made, edge, store);
        run.push_back(&at->node);
    }
}

void BreakNodes::lose_one() {
    if (--left == 0) {
        std::destroy(begin(), end());
        this->~BreakNodes();
        ::operator delete(this);
    }
}

void BreakNodes::disown() {
    list = nullptr;
    for (BreakNode* at = begin(); at != end(); ++at) {
        at->vis.store = nullptr;
    }
}

void BreakNodeList::disown_all() {
    for (BreakNodes* at = std::exchange(first, nullptr); at != nullptr; at = at->next) {
        at->disown();
    }
}

} // namespace nurvex7
