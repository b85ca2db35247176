#pragma once

#include "nurvex7/model/node.h"
#include "nurvex7/model/visual_store.h"

namespace nurvex7 {

/// The break nodes of one edge inside one owner, looked up once for all that is done with them.
///
/// Space   graph; owner-relative inside a layout run
/// Duty    the run is neither removed nor made while this is in use
class BreakRun {
public:
    /// Enters an empty run where there is none, like Edge::GetBreakNodesIn.
    BreakRun(const Edge& edge, const Node& owner) : BreakRun(edge, owner.GetID()) {}
    BreakRun(const Edge& edge, int owner_id) : vis(edge.get_vis()) {
        const IEdgeImpl& impl = *edge.get_impl();
        DefaultEdgeVis* const known = impl.known_vis;
        if (known != nullptr && known->store == vis.get()) {
            nodes = &known->run_in(owner_id);
        } else {
            held = vis->get_edge_vis(edge.get_impl())->get_break_nodes_in(owner_id);
            nodes = dynamic_cast<BreakNodes*>(held.get());
        }
        // A run of another store holds the nodes of this one, but not their places.
        own_places = nodes != nullptr && nodes->get_store() == vis.get();
        count = nodes != nullptr ? nodes->GetCount() : held->GetCount();
    }

    /// A run of the edge that is known, of the store of the edge.
    BreakRun(const Edge& edge, BreakNodes& known)
        : vis(edge.get_vis()), nodes(&known), own_places(true), count(known.GetCount()) {}

    /// The run of an edge in an owner; null where there is none, where the edge does not remember
    /// its record, and where the run is of another store.
    static BreakNodes* Find(const Edge& edge, int owner_id) {
        const DefaultEdgeVis* const known = edge.get_impl()->known_vis;
        if (known == nullptr || known->store != edge.get_vis().get()) {
            return nullptr;
        }
        BreakNodes* const run = known->known_run_in(owner_id);
        return run != nullptr && run->get_store() == known->store ? run : nullptr;
    }

    /// Drops the run of an edge in an owner, and makes one of `count` new break nodes.
    static BreakRun Renew(const Edge& edge, int owner_id, int count) {
        const IEdgeImpl& impl = *edge.get_impl();
        DefaultEdgeVis* const known = impl.known_vis;
        if (known != nullptr && known->store == edge.get_vis().get()) {
            known->remove_break_nodes_in(owner_id);
            known->add_break_nodes_in(owner_id, count);
        } else {
            const graph_ptr<IEdgeVis> record = edge.get_vis()->get_edge_vis(edge.get_impl());
            record->remove_break_nodes_in(owner_id);
            record->add_break_nodes_in(owner_id, count);
        }
        return BreakRun(edge, owner_id);
    }

    int get_count() const { return count; }
    /// Duty: 0 <= index < get_count()
    Node at(int index) const { return Node(vis, &impl_at(index)); }
    /// The same without a handle: the run holds it.
    INodeImpl& impl_at(int index) const {
        return nodes != nullptr ? nodes->at(index) : *held->GetItem(index);
    }
    /// The run, where it is one of this store; null otherwise.
    BreakNodes* get_nodes() const { return own_places ? nodes : nullptr; }
    const graph_ptr<IGraphVis>& get_vis() const { return vis; }
    int id_at(int index) const {
        return nodes != nullptr ? nodes->id_at(index) : held->GetItem(index)->get_id();
    }
    tamsel7::point<double> get_position(int index) const {
        return own_places && index < nodes->get_own_count() ? nodes->own_place(index)
                                                            : at(index).GetPosition();
    }
    void set_position(int index, double x, double y) const {
        if (own_places) {
            nodes->set_place_at(index, {x, y});
        } else {
            at(index).SetPosition(x, y);
        }
    }
    void shift(const tamsel7::point<double>& by) const {
        if (own_places) {
            nodes->shift(by);
            return;
        }
        for (int i = 0; i < count; ++i) {
            const tamsel7::point<double> p = at(i).GetPosition();
            at(i).SetPosition(p.x + by.x, p.y + by.y);
        }
    }

private:
    const graph_ptr<IGraphVis>& vis;
    graph_ptr<node_impl_set> held; ///< null where the edge remembers its record
    BreakNodes* nodes = nullptr;   ///< null where the store is of another kind
    bool own_places;
    int count;
};

/// The edge that a break node bends; a null one for what is none, such as a removed node.
inline Edge edge_of_bend(const Node& bend) {
    if (const BreakNodes* const run = bend.get_impl()->run) {
        return Edge(bend.get_vis(), run->get_edge());
    }
    EdgeSet edges = bend.GetEdgesOut();
    return edges.GetCount() > 0 ? edges.GetItem(0) : Edge(bend.get_vis(), graph_ptr<IEdgeImpl>());
}

} // namespace nurvex7
