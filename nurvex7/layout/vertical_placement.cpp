#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace nurvex7 {

// The room that a node takes along its level. A dummy node is as tall as the line that passes
// through it; a real node is taller by a track for each edge that is routed around it, all tracks
// reckoned with the width of one of its edges.
//
// Deliberate: in an Update the tracks are those of new edges only; old ones are routed over what is
// there, so that the old drawing of the node is not disturbed.
double IncLayout::_get_height(const Node& node) {
    if (node.IsDummy()) {
        const Edge e = edge_of_bend(node);
        return e.get_impl().get() != nullptr ? e.GetHandler()->GetWidth(e) : 0; // or it is removed
    }
    const double height = node.GetSize().height;
    const LocalNodeInfo* const known = local_info.node_info.find(node);
    const int tracks = known != nullptr ? known->wrap_count : 0;
    if (tracks < 1) {
        return height;
    }
    const StructureIndex::Pairs in = parents_of(node);
    const StructureIndex::Pairs set = in.empty() ? children_of(node) : in;
    if (set.empty()) {
        return height; // the edges of the tracks have been removed since the count was made
    }
    const Edge& e = set.front().edge;
    return height + tracks * (edge_gap + e.GetHandler()->GetWidth(e));
}

double IncLayout::gap_of(const Node& node) const {
    return node.IsDummy() ? edge_gap : node_gap;
}

// Stacks every level from the top, in its order; the forces shift the levels afterwards.
//
// Reads   level_nodes, sizes, wrap_count, edge widths
// Writes  y of the nodes on levels 1 to L-2; x is 0
// Needs   barycentric_adjust before it
// Leaves  neighbours exactly their gaps apart, every level starting at 0
// Space   owner-relative
void IncLayout::calculate_initial_y_coords() {
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        double y = 0;
        for_each_on_level(level_nodes[k], [&](Node& n) {
            const double gap = gap_of(n);
            y += gap / 2;
            n.SetPosition(0, y);
            y += _get_height(n) + gap / 2;
        });
    }
}

bool first_greater_p(std::pair<double, double> entry, double y) {
    return entry.first > y;
}

namespace {

using rooms_t = std::map<double, double>;

// Replaces each amount by the sum of it and all before it.
std::vector<std::pair<double, double>> _accumulate(const rooms_t& rooms) {
    std::vector<std::pair<double, double>> total(rooms.begin(), rooms.end());
    for (std::size_t i = 1; i < total.size(); ++i) {
        total[i].second = total[i - 1].second + total[i].second;
    }
    return total;
}

} // namespace

// The height of a node of a level, less the way to the edge of a dummy node where that is known.
double IncLayout::room_on_level(std::size_t k, std::size_t i) {
    Standing& at = standings[k][i];
    if (at.room != Standing::UNKNOWN) {
        return at.room;
    }
    if (!at.is_dummy || at.number < 0) {
        return at.room = _get_height(level_nodes[k][i]);
    }
    const Edge& edge = run_edges->edge_of(run_edges->all()[static_cast<std::size_t>(at.number)]);
    return at.room = edge.GetHandler()->GetWidth(edge);
}

// The conflicts of a level: where room has to be opened, and how much.
void IncLayout::find_rooms(std::size_t k, rooms_t& rooms) {
    const double min_gap = std::min(node_gap, edge_gap) / 2;
    const std::vector<Standing>& level = standings[k];
    const auto look_below = [&](std::size_t i) {
        const double need = level[i].y + room_on_level(k, i) + min_gap;
        const double y = level[i + 1].y;
        if (y < need) {
            double& room = rooms.emplace(y, need - y).first->second;
            room = std::max(room, need - y);
        }
    };
    const auto entry_of = [&](std::size_t i) -> const RunEdge* {
        const auto number = static_cast<std::size_t>(level[i].number);
        return level[i].is_dummy && level[i].number >= 0 ? &run_edges->all()[number] : nullptr;
    };
    for_each_ahead(
        level.empty() ? 0 : level.size() - 1, look_below,
        [&](std::size_t i) { prefetch(entry_of(i)); },
        [&](std::size_t i) {
            if (const RunEdge* const e = entry_of(i)) {
                prefetch(&run_edges->edge_of(*e));
            }
        });
}

// Opens room where the old y no longer fit, pushing down everything below a conflict on all levels
// alike, so that nodes of different levels stay aligned.
//
// Deliberate: a conflict is measured with half of the smaller gap and not with the full one, which
// keeps an old drawing from spreading when a node has merely grown a little.
//
// Reads   level_nodes, y, sizes, edge widths
// Writes  y of the nodes on levels 1 to L-2
// Needs   restore_old_levels before it
// Leaves  the order along every level
// Space   owner-relative
void IncLayout::make_y_shifts() {
    if (level_nodes.size() < 3) {
        return;
    }
    std::vector<std::vector<Standing>>& standing = take_standings();
    rooms_t rooms;
    for (std::size_t k = 1; k + 1 < standing.size(); ++k) {
        find_rooms(k, rooms);
    }
    if (rooms.empty()) {
        return;
    }
    const std::vector<std::pair<double, double>> total = _accumulate(rooms);
    for (std::size_t k = 1; k + 1 < standing.size(); ++k) {
        for (std::size_t i = 0; i < standing[k].size(); ++i) {
            double& y = standing[k][i].y;
            if (!knows_all_phases()) {
                y = level_nodes[k][i].GetPosition().y; // a node may stand on the levels twice
            }
            const double centre = y + room_on_level(k, i) / 2;
            const auto below =
                std::partition_point(total.begin(), total.end(), [&](const auto& entry) {
                    return !first_greater_p(entry, centre);
                });
            if (below != total.begin()) {
                y += (below - 1)->second;
                Node& n = level_nodes[k][i];
                n.SetPosition(n.GetPosition().x, y);
            }
        }
    }
}

} // namespace nurvex7
