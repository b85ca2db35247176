#include "apps/nurvex/series_layout.h"

#include "nurvex7/model/folding.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <set>

namespace nurvex {

using namespace nurvex7;

// The bends of an edge between a node and the border of its owner, by their places in the list: two
// beside the node, which stand on no level, and for each level on the way one that stands on it. On
// the levels between, it has a partner at the other side of the column.
namespace {

int first_on_level(Order order) {
    return order == ORDER_IN ? 0 : 2;
}

int last_on_level(Order order, int count) {
    return order == ORDER_IN ? count - 3 : count - 1;
}

} // namespace

SeriesLayout::SeriesLayout(double level_gap_, double node_gap_, double edge_gap_,
                           double edge_margin_)
    : IncLayout(level_gap_, node_gap_, edge_gap_, edge_margin_) {
    serves_nests_flat = true;
    shares_tables = true;
    const auto insert_behind = [](std::vector<phase_t>& phases, phase_t known,
                                  void (SeriesLayout::*own)()) {
        const auto place = std::find(phases.begin(), phases.end(), known);
        phases.insert(place + 1, static_cast<phase_t>(own));
    };
    const phase_t restored = &SeriesLayout::restore_old_levels;
    const phase_t placed = &SeriesLayout::place_nodes_on_levels;
    const phase_t fitted_in = &SeriesLayout::calculate_new_nodes_y_coords;
    insert_behind(update_phases, restored, &SeriesLayout::restore_crossings);
    insert_behind(update_phases, placed, &SeriesLayout::renew_crossings);
    insert_behind(update_phases, fitted_in, &SeriesLayout::sort_levels);
    insert_behind(resize_phases, restored, &SeriesLayout::restore_crossings);
    insert_behind(resize_phases, restored, &SeriesLayout::restore_marks);
    insert_behind(resize_phases, restored, &SeriesLayout::restore_columns);
    resize_phases.insert(resize_phases.begin(),
                         static_cast<phase_t>(&SeriesLayout::remember_columns));
    const phase_t shifted = &SeriesLayout::make_y_shifts;
    for (std::vector<phase_t>* const phases : {&update_phases, &resize_phases}) {
        std::replace(phases->begin(), phases->end(), shifted,
                     static_cast<phase_t>(&SeriesLayout::open_rooms));
    }
    for (std::vector<phase_t>* const phases : {&make_phases, &update_phases, &resize_phases}) {
        phases->insert(phases->begin(), static_cast<phase_t>(&SeriesLayout::find_crossings));
        phases->push_back(static_cast<phase_t>(&SeriesLayout::mark_crossings));
    }
}

int SeriesLayout::LevelOf(const Node& node) const {
    const auto records = cluster_info.find(node.GetOwner());
    if (records == cluster_info.end()) {
        return -1;
    }
    const NodeInfo* const record = records->second.node_info.find(node);
    return record != nullptr ? record->level : -1;
}

bool SeriesLayout::stood_before(const Node& node) {
    return !IsFlagSet(node, NODE_HIDDEN) && !_is_new(node);
}

// Most nodes have no edge across the border of their owner, so those that have are listed once.
//
// Reads   nodes, the graph
// Writes  crossings
// Space   none
void SeriesLayout::find_crossings() {
    crossings.clear();
    for (const Node& node : nodes) {
        for (const Order order : {ORDER_IN, ORDER_OUT}) {
            if (edges_of({node, order}).size() > 0) {
                crossings.push_back({node, order});
            }
        }
    }
}

StructureIndex::Pairs SeriesLayout::edges_of(const Crossings& at) {
    return at.order == ORDER_IN ? edges_in_of(at.node) : edges_out_of(at.node);
}

// A resize forgets the columns when the old drawing comes back. An owner is resized because
// something in it has changed: what stands beside that stays where it is, as in an update.
//
// Reads   cur_levels
// Writes  columns
// Space   owner-relative
void SeriesLayout::remember_columns() {
    columns = *cur_levels;
}

// Writes  cur_levels
// Needs   remember_columns, restore_old_levels
// Space   owner-relative
void SeriesLayout::restore_columns() {
    for (std::size_t k = 0; k < level_nodes.size(); ++k) {
        cur_levels->set(k, columns.get(k));
    }
}

// Tells the edges that run backwards or stay on their level from the others once more: what a
// resize finds of that is about the owner that was served last.
//
// Reads   nodes, level in cur_info
// Writes  reversed, flat of edges
// Needs   restore_old_levels
// Space   none
void SeriesLayout::restore_marks() {
    mark_reversed_edges(&nodes, /*by_order=*/false);
}

// Puts the old bends of crossing edges back on their levels, where they keep their y and their
// place among the nodes.
//
// Reads   nodes, crossings, old_info, flags, y
// Writes  level_nodes; records of bends in cur_info; neighbour lists
// Needs   restore_old_levels
// Leaves  every level in the order of the old y
// Space   owner-relative
void SeriesLayout::restore_crossings() {
    std::vector<bool> grown;
    for (const Crossings& at : crossings) {
        if (stood_before(at.node)) {
            for (const auto& pair : edges_of(at)) {
                restore_chain(at, pair.edge, grown);
            }
        }
    }
    for (std::size_t k = 0; k < grown.size(); ++k) {
        if (grown[k]) {
            sort_level(k);
        }
    }
}

// Brings every level that has got something new into the order of its y. New nodes are listed
// behind the old ones; the owner ends below the last node of a level, which has to be the lowest
// then.
//
// Reads   y
// Writes  level_nodes
// Space   owner-relative
void SeriesLayout::sort_levels() {
    for (std::size_t k = 0; k < level_nodes.size(); ++k) {
        if (!level_nodes[k].empty() && _is_new(level_nodes[k].back())) {
            sort_level(k);
        }
    }
}

void SeriesLayout::sort_level(std::size_t level) {
    struct Turn {
        double y;
        std::size_t place; ///< before
    };
    std::vector<Node>& nodes_of_level = level_nodes[level];
    std::vector<Turn> turns;
    turns.reserve(nodes_of_level.size());
    for (const Node& node : nodes_of_level) {
        turns.push_back({node.GetPosition().y, turns.size()});
    }
    std::stable_sort(turns.begin(), turns.end(),
                     [](const Turn& a, const Turn& b) { return a.y < b.y; });
    std::vector<Node> sorted;
    sorted.reserve(turns.size());
    for (const Turn& turn : turns) {
        sorted.push_back(nodes_of_level[turn.place]);
    }
    nodes_of_level.swap(sorted);
    level_changed(level);
}

void SeriesLayout::restore_chain(const Crossings& at, const Edge& edge, std::vector<bool>& grown) {
    const auto& [node, order] = at;
    NodeSet bends = edge.GetBreakNodesIn(node.GetOwner());
    const int first = first_on_level(order);
    const int last = last_on_level(order, bends.GetCount());
    for (int i = first; i <= last; ++i) {
        const NodeInfo old = old_info[bends.GetItem(i)];
        const bool stood = old.is_old && (i % 2 != 0 || old.level >= 0);
        if (!stood) {
            return; // one that has come since, or came out of the owner since, has no chain yet
        }
    }
    for (int i = first; i <= last; ++i) {
        const Node bend = bends.GetItem(i);
        const NodeInfo old = old_info[bend];
        (*cur_info)[bend] = old;
        if (i % 2 == 0) {
            const auto level = static_cast<std::size_t>(old.level);
            lengthen_to_hold(old.level);
            level_nodes[level].push_back(bend);
            grown.resize(level_nodes.size());
            grown[level] = true;
            if (i > first) {
                mark_as_neighbours(bends.GetItem(i - 2), bend, edge);
            }
        }
    }
    if (first <= last) {
        const bool enters = order == ORDER_IN;
        mark_as_neighbours(enters ? bends.GetItem(last) : node,
                           enters ? node : bends.GetItem(first), edge);
    }
}

// Opens room where a node has grown over the one below it, and pushes down everything below on all
// levels alike, so that nodes of different levels stay aligned. A node may grow a little into its
// gap without a push, and has the whole of it again after one.
//
// The pushed are those whose centre lies below the conflict. A node that has grown may have its
// centre there too; it stays all the same, or it would go on covering the one below.
//
// Reads   level_nodes, y, sizes
// Writes  y of the nodes on levels 1 to L-2
// Needs   the old drawing restored
// Leaves  the order along every level
// Space   owner-relative
void SeriesLayout::open_rooms() {
    const std::map<double, double> rooms = find_rooms();
    if (rooms.empty()) {
        return;
    }
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        double below = std::numeric_limits<double>::infinity();
        for (auto n = level_nodes[k].rbegin(); n != level_nodes[k].rend(); ++n) {
            const tamsel7::point<double> p = n->GetPosition();
            const double centre = p.y + _get_height(*n) / 2;
            auto room = centre < below ? rooms.upper_bound(centre) : rooms.lower_bound(below);
            below = p.y;
            if (room != rooms.begin()) {
                n->SetPosition(p.x, p.y + std::prev(room)->second);
            }
        }
        level_changed(k);
    }
}

// How far everything from a y on has to be pushed, by that y.
std::map<double, double> SeriesLayout::find_rooms() {
    const double least_gap = std::min(node_gap, edge_gap) / 2;
    std::map<double, double> rooms;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        const std::vector<Node>& level = level_nodes[k];
        double bottom = -std::numeric_limits<double>::infinity();
        for (std::size_t i = 0; i < level.size(); ++i) {
            const double y = level[i].GetPosition().y;
            if (y < bottom + least_gap) {
                const double need = bottom + (gap_of(level[i - 1]) + gap_of(level[i])) / 2 - y;
                rooms[y] = std::max(rooms[y], need);
            }
            bottom = y + _get_height(level[i]);
        }
    }
    double sum = 0;
    for (auto& [y, room] : rooms) {
        sum += room;
        room = sum;
    }
    return rooms;
}

// Makes the chains anew that do not lead to the border: those of edges that have come since, and
// all on a side where a level was opened or given up at the border.
//
// Reads   nodes, crossings, old_info, cur_info
// Writes  level_nodes, break nodes, neighbour lists
// Needs   place_nodes_on_levels
// Leaves  new bends behind the old nodes of their level
// Space   none
void SeriesLayout::renew_crossings() {
    std::vector<Crossings> cut_off;
    std::set<int> gone;
    for (const Crossings& at : crossings) {
        if (!stood_before(at.node)) {
            continue;
        }
        const StructureIndex::Pairs edges = edges_of(at);
        bool all_reach = true;
        for (const auto& pair : edges) {
            all_reach = all_reach && reaches_border(at, pair.edge);
        }
        if (all_reach) {
            continue;
        }
        cut_off.push_back(at);
        for (const auto& pair : edges) {
            NodeSet bends = pair.edge.GetBreakNodesIn(at.node.GetOwner());
            for (int i = 0; i < bends.GetCount(); ++i) {
                gone.insert(bends.GetItem(i).GetID());
            }
        }
    }
    if (cut_off.empty()) {
        return;
    }
    for (std::size_t k = 0; k < level_nodes.size(); ++k) {
        std::erase_if(level_nodes[k], [&](const Node& n) { return gone.count(n.GetID()) != 0; });
        level_changed(k);
    }
    for (const Crossings& at : cut_off) {
        insert_dummy_nodes_inout(at.node, at.order);
    }
}

bool SeriesLayout::reaches_border(const Crossings& at, const Edge& edge) {
    const auto& [node, order] = at;
    NodeSet bends = edge.GetBreakNodesIn(node.GetOwner());
    const int border = order == ORDER_IN ? 0 : static_cast<int>(level_nodes.size()) - 1;
    const int at_border = order == ORDER_IN ? 0 : bends.GetCount() - 1;
    return bends.GetCount() >= 3 && (*cur_info)[bends.GetItem(at_border)].level == border;
}

// Records the chains as parts of the drawing, so that the next run finds them.
//
// Reads   crossings, flags, break nodes
// Writes  is_old of bends in cur_info
// Needs   the finished drawing
// Space   none
void SeriesLayout::mark_crossings() {
    for (const Crossings& at : crossings) {
        if (IsFlagSet(at.node, NODE_HIDDEN)) {
            continue;
        }
        for (const auto& pair : edges_of(at)) {
            NodeSet bends = pair.edge.GetBreakNodesIn(at.node.GetOwner());
            const int last = last_on_level(at.order, bends.GetCount());
            for (int i = first_on_level(at.order); i <= last; ++i) {
                NodeInfo& info = (*cur_info)[bends.GetItem(i)];
                info.is_old = info.level >= 0;
            }
        }
    }
    crossings.clear();
}

} // namespace nurvex
