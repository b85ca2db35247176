#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/model/break_run.h"

#include <optional>

namespace nurvex7 {

namespace {

// The y of the first or last bend of an edge inside a node; nothing where the edge ends on the node
// itself. Most edges do, so asking enters no empty run for them.
std::optional<double> _y_of_inner_bend(const Edge& edge, const Node& node, Order order) {
    const DefaultEdgeVis* const known = edge.get_impl()->known_vis;
    if (known != nullptr && known->store == edge.get_vis().get() &&
        known->known_run_in(node.GetID()) == nullptr) {
        return std::nullopt;
    }
    const graph_ptr<node_impl_set> inner = edge.FindBreakNodesIn(node);
    const int count = inner.get() != nullptr ? inner->GetCount() : 0;
    if (count == 0) {
        return std::nullopt;
    }
    const Node at_border(edge.get_vis(), inner->GetItem(order == ORDER_IN ? 0 : count - 1));
    return at_border.GetPosition().y;
}

} // namespace

// Where an edge goes on inside the node, its bends beside the node take the height of the first or
// last bend in there: this is what lets an edge run straight through a cluster's border.
double IncLayout::y_beside(const Edge& edge, const Node& node, double y, Order order) {
    const std::optional<double> inner = _y_of_inner_bend(edge, node, order);
    return inner.has_value() ? *inner + node.GetPosition().y : y;
}

// One bend beside a node.
void IncLayout::adjust_break_to_inner(Node break_node, const Node& node, double x, double y,
                                      Order order) {
    const Edge edge = break_node.GetEdgesOut().GetItem(0);
    break_node.SetPosition(x, y_beside(edge, node, y, order));
}

// The tracks under a node: first its outgoing flat and reversed edges, then its incoming reversed
// ones, each edge_gap below the one before. Gives the bottom of the last.
double IncLayout::lay_tracks(int node, double bottom, RunEdges& edges) {
    const auto lay = [&](const RunEdge& e, double RunEdges::Tracks::*side) {
        bottom += edge_gap;
        edges.tracks_of(e).*side = bottom;
        const Edge& edge = edges.edge_of(e);
        bottom += edge.GetHandler()->GetWidth(edge);
    };
    edges.for_each_track(
        *run_nodes, node, [&](const RunEdge& e) { lay(e, &RunEdges::Tracks::under_tail); },
        [&](const RunEdge& e) { lay(e, &RunEdges::Tracks::under_head); });
    return bottom;
}

// The track under the tail of a flat or reversed edge.
void IncLayout::place_backedge_out(const BreakRun& b, double x_start, double x_stub, double y) {
    if (b.get_count() > 2) {
        b.set_position(2, x_stub, y);
    }
    if (b.get_count() > 3) {
        b.set_position(3, x_start, y);
    }
}

// The track under the head of a reversed edge.
void IncLayout::place_backedge_in(const BreakRun& b, double x_stub, double x_end, double y) {
    const int n = b.get_count();
    if (n >= 4) {
        b.set_position(n - 4, x_end, y);
    }
    if (n >= 3) {
        b.set_position(n - 3, x_stub, y);
    }
}

// The border ports of the owner: each at the height of the next point of its edge.
void IncLayout::adjust_ports(std::vector<Node>* level, double x, Order order) {
    for (Node& port : *level) {
        LocalNodeInfo& info = local_info[port];
        const Segments& next = order == ORDER_IN ? info.out_neighbours : info.in_neighbours;
        if (next.empty()) {
            continue;
        }
        const Node& q = next[0].node;
        const double y = q.GetPosition().y;
        if (q.IsDummy()) {
            port.SetPosition(x, y);
        } else {
            adjust_break_to_inner(port, q, x, y + q.GetSize().height / 2, order);
        }
    }
}

// Where the edge of a pair meets the node of the pair: in the middle of a side, or at the height of
// the bend on the border where the edge goes on inside the node.
tamsel7::point<double> IncLayout::get_inout_coords(const NodeEdgePair& pair, Order order) {
    const tamsel7::point<double> p = pair.node.GetPosition();
    if (pair.node.IsDummy()) {
        return p;
    }
    const double x = order == ORDER_IN ? p.x : p.x + pair.node.GetSize().width;
    return {x, p.y + inout_offset(pair, order)};
}

// How far below the top of a real node that is.
double IncLayout::inout_offset(const NodeEdgePair& pair, Order order) {
    const std::optional<double> inner = _y_of_inner_bend(pair.edge, pair.node, order);
    return inner.has_value() ? *inner : pair.node.GetSize().height / 2;
}

} // namespace nurvex7
