#include "nurvex7/model/break_nodes.h"
#include "nurvex7/model/visual_store.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace nurvex7 {

int DummyNodeImpl::current_id = -1;

// Called in place of the destructor.
void DummyNodeImpl::operator delete(DummyNodeImpl* gone, std::destroying_delete_t) {
    gone->run->lose_one();
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
    return run->get_edge_set();
}

graph_ptr<edge_impl_set> DummyNodeImpl::get_edges_out() {
    return run->get_edge_set();
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

// Runs

graph_ptr<BreakNodes> BreakNodes::Make(const graph_ptr<IEdgeImpl>& edge, DefaultGraphVis* store,
                                       int count) {
    static_assert(alignof(DummyNodeImpl) <= alignof(point) &&
                  sizeof(BreakNodes) % alignof(point) == 0);
    const auto n = static_cast<std::size_t>(count);
    const std::size_t size =
        sizeof(BreakNodes) + n * (sizeof(point) + sizeof(DummyNodeImpl)) + bytes_of_notes(n);
    return ::new (::operator new(size)) BreakNodes(edge, store, count);
}

BreakNodes::BreakNodes(const graph_ptr<IEdgeImpl>& of_edge, DefaultGraphVis* of_store, int how_many)
    : count(how_many), total(how_many), store(of_store), edge(of_edge) {
    std::uninitialized_value_construct_n(places(), count);
    for (int i = 0; i < count; ++i) {
        std::construct_at(nodes() + i, this, i)->ref_count = 1; // held by the run
    }
    if (store == nullptr) {
        return;
    }
    next = std::exchange(store->break_nodes.first, this);
    if (next != nullptr) {
        next->before = this;
    }
}

BreakNodes::~BreakNodes() {
    if (store == nullptr) {
        return;
    }
    (before != nullptr ? before->next : store->break_nodes.first) = next;
    if (next != nullptr) {
        next->before = before;
    }
}

// Called in place of the destructor: a break node that somebody holds needs the memory still.
void BreakNodes::operator delete(BreakNodes* gone, std::destroying_delete_t) {
    gone->let_go();
}

// A run that has been let go is nobody's to keep any more.
BreakNodes::Notes BreakNodes::take_notes(const void* holder, std::uint16_t stamp) {
    auto room = std::find(holders.begin(), holders.end(), holder);
    if (room == holders.end()) {
        room = std::find(holders.begin(), holders.end(), nullptr);
    }
    if (room == holders.end() || ref_count == 0) {
        return Notes();
    }
    const auto which = static_cast<std::size_t>(room - holders.begin());
    holders[which] = holder;
    stamps[which] = stamp;
    const Notes taken = notes(which);
    std::fill_n(taken.present, count, static_cast<unsigned char>(0));
    return taken;
}

void BreakNodes::drop_notes(const void* holder) {
    std::replace(holders.begin(), holders.end(), holder, static_cast<const void*>(nullptr));
}

void BreakNodes::let_go() {
    appended.clear();
    for (int i = 0; i < count; ++i) {
        held += --nodes()[i].ref_count > 0 ? 1 : 0;
    }
    if (held == 0) {
        end();
    }
}

void BreakNodes::lose_one() {
    if (--held == 0) {
        end();
    }
}

void BreakNodes::end() {
    std::destroy_n(nodes(), count);
    this->~BreakNodes();
    ::operator delete(this);
}

void BreakNodes::append(int more) {
    appended.push_back({total - count, Make(edge, store, more)});
    total += more;
}

DummyNodeImpl& BreakNodes::at_appended(int index) {
    const auto behind =
        std::upper_bound(appended.begin(), appended.end(), index,
                         [](int i, const Appended& more) { return i < more.start; });
    const Appended& found = *(behind - 1);
    return found.piece->nodes()[index - found.start];
}

void BreakNodes::set_place_of_appended(int index, const point& value) {
    const DummyNodeImpl& node = at_appended(index);
    node.run->set_place_of(node, value);
}

void BreakNodes::shift(const point& by) {
    for (point* at = places(); at != places() + count; ++at) {
        *at = {at->x + by.x, at->y + by.y};
    }
    for (const Appended& more : appended) {
        more.piece->shift(by);
    }
    if (indexed) {
        leave_index();
    }
}

const graph_ptr<edge_impl_vector>& BreakNodes::get_edge_set() {
    if (edge_set.get() == nullptr) {
        edge_set = new edge_impl_vector;
        edge_set->push_back(edge);
    }
    return edge_set;
}

int BreakNodes::count_edge_holds() const {
    int holds = edge_set.get() != nullptr ? 2 : 1;
    for (const Appended& more : appended) {
        holds += more.piece->count_edge_holds();
    }
    return holds;
}

void BreakNodes::mark_indexed() {
    indexed = true;
    for (const Appended& more : appended) {
        more.piece->mark_indexed();
    }
}

// Layouts store millions of places: only the first after a build tells of itself.
void BreakNodes::leave_index() {
    indexed = false;
    if (store != nullptr) {
        store->note_route(edge->get_id());
    }
}

void BreakNodeList::disown_all() {
    for (BreakNodes* at = std::exchange(first, nullptr); at != nullptr; at = at->next) {
        at->store = nullptr;
    }
}

} // namespace nurvex7
