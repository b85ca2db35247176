#pragma once

#include "nurvex7/model/node.h"
#include "nurvex7/model/visual_store.h"

#include <typeinfo>

namespace nurvex7 {

/// The break nodes of one edge inside one owner, looked up once for all that is done with them.
///
/// Space   graph; owner-relative inside a layout run
/// Duty    the run is neither removed nor made while this is in use
class BreakRun {
public:
    /// Enters an empty run where there is none, like Edge::GetBreakNodesIn.
    BreakRun(const Edge& edge, const Node& owner) : vis(edge.get_vis()) {
        const IEdgeImpl& impl = *edge.get_impl();
        DefaultEdgeVis* const known = impl.known_vis;
        if (known != nullptr && known->store == vis.get()) {
            set = &known->run_in(owner.GetID());
        } else {
            held = vis->get_edge_vis(edge.get_impl())->get_break_nodes_in(owner.GetID());
            set = dynamic_cast<node_impl_vector*>(held.get());
        }
        count = set != nullptr ? set->GetCount() : held->GetCount();
    }

    int get_count() const { return count; }
    /// Duty: 0 <= index < get_count()
    Node at(int index) const { return Node(vis, impl_at(index)); }
    int id_at(int index) const { return impl_at(index)->get_id(); }
    void shift(int index, const tamsel7::point<double>& by) const {
        const graph_ptr<INodeImpl> bend = impl_at(index);
        if (DefaultNodeVis* const known = known_vis_in(vis.get(), *bend)) {
            const tamsel7::point<double> p = known->get_position();
            known->set_position({p.x + by.x, p.y + by.y});
        } else {
            const graph_ptr<INodeVis> record = vis->get_node_vis(bend);
            const tamsel7::point<double> p = record->get_position();
            record->set_position({p.x + by.x, p.y + by.y});
        }
    }
    void set_position(int index, double x, double y) const {
        if (set == nullptr) {
            at(index).SetPosition(x, y);
            return;
        }
        const graph_ptr<INodeImpl>& bend = (*set)[index];
        if (DefaultNodeVis* const known = known_vis_in(vis.get(), *bend)) {
            known->set_position({x, y});
        } else {
            vis->get_node_vis(bend)->set_position({x, y});
        }
    }

private:
    graph_ptr<INodeImpl> impl_at(int index) const {
        return set != nullptr ? (*set)[index] : held->GetItem(index);
    }

    const graph_ptr<IGraphVis>& vis;
    graph_ptr<node_impl_set> held;   ///< null where the edge remembers its record
    node_impl_vector* set = nullptr; ///< null where the store is of another kind
    int count;
};

/// The edge that a break node bends. Duty: the node is one
inline Edge edge_of_bend(const Node& bend) {
    const INodeImpl& impl = *bend.get_impl();
    if (typeid(impl) == typeid(DummyNodeImpl)) {
        return Edge(bend.get_vis(), (*static_cast<const DummyNodeImpl&>(impl).edge_set)[0]);
    }
    return bend.GetEdgesOut().GetItem(0);
}

} // namespace nurvex7
