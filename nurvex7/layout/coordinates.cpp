#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/placing.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace nurvex7 {

// Turns order and y into the finished drawing of the owner: columns, centred nodes, the bends of
// every edge, tracks, ports, and the size of it all.
//
// Reads   level_nodes, y, sizes, marks of edges, columns of the run before
// Writes  positions of nodes and bends, the level table, result_size
// Needs   y for all nodes of levels 1 to L-2, break lists of the lengths that dummy_nodes.cpp gives
// Leaves  nothing above node_gap; the order along every level
// Space   owner-relative
void IncLayout::calculate_x_coords() {
    take_standings();
    RunEdges& edges = take_run_edges();
    run_nodes->read_flags_again(nodes);
    edges.read_marks(*run_nodes, local_info);
    Placing placing{edges, top_shift(), 0, 0, std::vector<PlacedNode>(nodes.size())};
    double x = level_gap;
    double max_bottom = 0;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        x = place_column(k, x, placing);
        count_steps(level_nodes[k].size());
        max_bottom = std::max(max_bottom, placing.bottom + node_gap);
    }
    if (keeps_records) {
        run_nodes->read_flags_again(nodes); // what is shown now is what will have been drawn
        knows_who_is_shown = true;
    }
    place_edges_beside(placing);
    place_passing_edges(placing);
    standings.clear();
    if (!level_nodes.empty()) {
        adjust_ports(&level_nodes.front(), 0, ORDER_IN);
        adjust_ports(&level_nodes.back(), x, ORDER_OUT);
    }
    result_size = {x, max_bottom};
}

// How far the drawing has to come down for its topmost node to lie at node_gap: 0 or negative. A
// drawing that lies lower stays where it is.
double IncLayout::top_shift() const {
    double top = node_gap;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        for (const Standing& at : standings[k]) {
            top = std::min(top, at.y);
        }
    }
    return top - node_gap;
}

// One column from x on; gives the x of the next. A column of dummy nodes only takes no room, so
// that long edges cost no width. The column of the run before stays where it was as long as it is
// wide enough and does not lie left of x.
//
// Deliberate: the bottom is not set back for each column; only real nodes move it.
// Deliberate: the gap behind the last column counts in the width of the owner.
double IncLayout::place_column(std::size_t k, double x, Placing& placing) {
    double x_end = x;
    const std::vector<Node>& level = level_nodes[k];
    const std::vector<Standing>& standing = standings[k];
    for (const Standing& at : standing) {
        if (!at.is_dummy) {
            x_end = std::max(x_end, x + at.width);
        }
    }
    if (x_end != x) {
        x_end += 2 * edge_margin;
    }
    const Level before = cur_levels->get(k);
    const bool wide_enough = before.width >= x_end - x;
    const bool not_left = before.x_start >= x;
    if (wide_enough && not_left) {
        x = before.x_start;
        x_end = before.x_end;
    } else if (wide_enough || not_left) {
        x_end = std::max(x_end, before.x_end);
    }
    cur_levels->set(k, Level{x, x_end, x_end - x});
    const auto place = [&](std::size_t i) {
        if (standing[i].is_dummy) {
            if (!standing[i].goes_with_edge) {
                placing.passing.push_back({&level[i], k});
            }
            return;
        }
        const int number = standing[i].number;
        PlacedNode* const spot =
            number >= 0 ? &placing.nodes[static_cast<std::size_t>(number)] : nullptr;
        // A node that stands on two levels has been moved already.
        const bool first_time = spot != nullptr && spot->turn < 0;
        const double y = first_time ? standing[i].y : level[i].GetPosition().y;
        const PlacedNode placed = place_normal_node(level[i], x, x_end, y - placing.y_shift);
        placing.bottom = placed.bottom;
        if (spot != nullptr) {
            placing.bottom = lay_tracks(number, placing.bottom, placing.edges);
            *spot = placed;
            spot->turn = placing.turn++;
        }
    };
    for_each_ahead(
        level.size(), place, [&](std::size_t i) { prefetch(level[i].get_impl().get()); },
        [&](std::size_t i) { prefetch(place_address(*level[i].get_impl())); });
    const double gap = x_end - x == 0 ? 0 : level_gap;
    return x_end + gap;
}

namespace {

// One bend of an edge, by its place from the tail or from the head. A list that was built for
// another state of the graph can be shorter than the kind of its edge says, when the edge was added
// or shown since and meets a Resize: what it lacks is passed over, and the edge has no route until
// a layout makes it anew.
void _put(const BreakRun& b, int index, double x, double y) {
    if (index >= 0 && index < b.get_count()) {
        b.set_position(index, x, y);
    }
}

void _put_from_end(const BreakRun& b, int back, double x, double y) {
    _put(b, b.get_count() - back, x, y);
}

} // namespace

// A node in the middle of its column, and the bends beside it of the edges that cross the border of
// the owner: every edge leaves on the right side and enters on the left, also when it is reversed
// or flat.
PlacedNode IncLayout::place_normal_node(Node node, double x_start, double x_end, double y) {
    const tamsel7::size<double> size = node.GetSize();
    const double c = y + size.height / 2;
    const double left = (x_start + x_end - size.width) / 2;
    const double right = left + size.width;
    node.SetPosition(left, y);
    // Deliberate: hidden far ends are not left out of the edges that cross the border.
    for (const StructureIndex::Pair& pair : edges_in_of(node)) {
        const BreakRun b(pair.edge, node.GetOwner());
        const double at = y_beside(pair.edge, node, c, ORDER_IN);
        _put_from_end(b, 2, x_start, at);
        _put_from_end(b, 1, left, at);
    }
    for (const StructureIndex::Pair& pair : edges_out_of(node)) {
        const BreakRun b(pair.edge, node.GetOwner());
        const double at = y_beside(pair.edge, node, c, ORDER_OUT);
        _put(b, 0, right, at);
        _put(b, 1, x_end, at);
    }
    return PlacedNode{left, right, c, y + size.height, x_start, x_end, -1};
}

// The bends of every edge beside its ends, and on its tracks. Each end places its own; where a list
// is too short for both, the end that is placed later has the last word.
void IncLayout::place_edges_beside(const Placing& placing) {
    RunEdges& edges = placing.edges;
    const std::span<const RunEdge> all = edges.all();
    const auto at_end = [&](int end) { return end >= 0 ? placing.nodes.data() + end : nullptr; };
    const auto place = [&](std::size_t i) {
        const RunEdge& e = all[i];
        const PlacedNode* const tail = e.leaves_tail && !e.head_hidden ? at_end(e.tail) : nullptr;
        const PlacedNode* const head = e.enters_head && !e.tail_hidden ? at_end(e.head) : nullptr;
        place_edge_beside(edges, e, tail, head);
        if (e.is_kept) {
            place_kept_chain(placing, e);
        }
        if (keeps_records) {
            take_records_over(edges, e);
        }
        count_steps(1);
    };
    for_each_ahead(all.size(), place, [&](std::size_t i) {
        all[i].is_kept ? RunEdges::ask_for_run(all[i]) : BreakNodes::PrefetchPlaces(all[i].run);
        prefetch(at_end(all[i].head));
    });
}

// Of one edge, beside those of its ends that have a place in this run.
void IncLayout::place_edge_beside(const RunEdges& edges, const RunEdge& e, const PlacedNode* tail,
                                  const PlacedNode* head) {
    const bool has_tail = tail != nullptr && tail->turn >= 0;
    const bool has_head = head != nullptr && head->turn >= 0;
    if (!has_tail && !has_head) {
        return;
    }
    const BreakRun b = edges.run_of(e);
    const auto beside = [&](int end, double c, Order order) {
        return e.goes_on_inside
                   ? y_beside(edges.edge_of(e), nodes[static_cast<std::size_t>(end)], c, order)
                   : c;
    };
    const bool on_track = e.flat || e.reversed;
    const auto leave = [&] {
        const double y = beside(e.tail, tail->centre, ORDER_OUT);
        _put(b, 0, tail->right, y);
        _put(b, 1, on_track ? tail->right + edge_margin : tail->x_end, y);
    };
    const auto leave_on_track = [&] {
        if (on_track) {
            place_backedge_out(b, tail->x_start, tail->right + edge_margin,
                               edges.tracks_of(e).under_tail);
        }
    };
    const auto enter = [&] {
        const double y = beside(e.head, head->centre, ORDER_IN);
        _put_from_end(b, 2, e.reversed ? head->left - edge_margin : head->x_start, y);
        _put_from_end(b, 1, head->left, y);
    };
    const auto enter_on_track = [&] {
        if (e.reversed) {
            place_backedge_in(b, head->left - edge_margin, head->x_end,
                              edges.tracks_of(e).under_head);
        }
    };
    if (tail == head) { // a loop: its node places both bends first, then both tracks
        leave();
        enter();
        leave_on_track();
        enter_on_track();
        return;
    }
    const bool tail_first = has_tail && (!has_head || tail->turn < head->turn);
    if (has_head && !tail_first) {
        enter();
        enter_on_track();
    }
    if (has_tail) {
        leave();
        leave_on_track();
    }
    if (has_head && tail_first) {
        enter();
        enter_on_track();
    }
}

// The dummy nodes of all columns that do not go with their edges, level by level.
void IncLayout::place_passing_edges(const Placing& placing) {
    const auto run_of = [&](std::size_t i) { return placing.passing[i].dummy->get_impl()->run; };
    const auto place = [&](std::size_t i) {
        const Placing::Passing& at = placing.passing[i];
        const Node& n = *at.dummy;
        const Level column = cur_levels->get(at.level);
        const double y = n.GetPosition().y - placing.y_shift;
        if (const RunEdge* const e = placing.edges.find(run_of(i))) {
            place_break_node(n, column.x_start, column.x_end, y, placing.edges.run_of(*e),
                             e->reversed);
        } else {
            const Edge edge = edge_of_bend(n);
            if (edge.get_impl().get() == nullptr) {
                return; // a handler has removed it in the middle of the run
            }
            const BreakRun b(edge, nodes.front().GetOwner());
            place_break_node(n, column.x_start, column.x_end, y, b, local_info[edge].reversed);
        }
    };
    for_each_ahead(
        placing.passing.size(), place,
        [&](std::size_t i) { prefetch(placing.passing[i].dummy->get_impl().get()); },
        [&](std::size_t i) { prefetch(run_of(i)); },
        [&](std::size_t i) {
            if (run_of(i) != nullptr) {
                run_of(i)->PrefetchAll();
            }
        });
}

// A dummy node and its partner, the other bend of the same edge on the same level: one at the left
// side of the column, one at the right.
void IncLayout::place_break_node(Node node, double x_start, double x_end, double y,
                                 const BreakRun& b, bool reversed) {
    const int i = find_partner(node, b);
    if (i < 0) {
        node.SetPosition(x_start, y);
        return;
    }
    const bool partner_first = i + 1 < b.get_count() && b.id_at(i + 1) == node.GetID();
    const bool partner_left = reversed || partner_first;
    b.set_position(i, partner_left ? x_start : x_end, y);
    node.SetPosition(partner_left ? x_end : x_start, y);
}

// The first entry of the list that has the level of the node and is not the node; -1 where there is
// none. A walk from the front would find it; but the bends of a list were made in one go and have
// descending ids without gaps, so the place of the node is known, and its partner stands right
// before or behind it. The walk is taken only where the list does not look like that.
int IncLayout::find_partner(const Node& node, const BreakRun& b) {
    const int level = (*cur_info)[node].level;
    const int count = b.get_count();
    const auto level_at = [&](int i) { return record_of(*cur_info, b, i).level; };
    const auto same_level = [&](int i) { return i >= 0 && i < count && level_at(i) == level; };
    const int place = count > 0 ? b.id_at(0) - node.GetID() : -1;
    if (place >= 0 && place < count && b.id_at(place) == node.GetID() &&
        (same_level(place - 1) || same_level(place + 1))) {
        // The bends at the front have no level. They get their records here, as in the walk, and
        // with them a place in the drawing that the next Update takes back.
        int front = 0;
        while (front < place && level_at(front) < 0) {
            ++front;
        }
        return same_level(place - 1) ? place - 1 : place + 1;
    }
    for (int i = 0; i < count; ++i) {
        if (same_level(i) && b.id_at(i) != node.GetID()) {
            return i;
        }
    }
    return -1;
}

} // namespace nurvex7
