#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/standing.h"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <vector>

namespace nurvex7 {

namespace {

// Half of the largest double, so that the size of a space without an end does not overflow.
constexpr double FAR_ABOVE = -DBL_MAX / 2;
constexpr double FAR_BELOW = DBL_MAX / 2;

} // namespace

// The space nearest to an ideal y that still has room: the search goes outward from there, to the
// nearer side first. The spaces at both ends are so large that it ends.
std::size_t IncLayout::_nearest_space(const std::vector<FreeSpace>& spaces, double ideal,
                                      double need) {
    std::size_t right = 1;
    while (right + 1 < spaces.size() && ideal > spaces[right].end) {
        ++right;
    }
    std::size_t left = right - 1;
    bool left_open = true;
    double left_distance = ideal - spaces[left].end;
    double right_distance = spaces[right].start - ideal;
    for (;;) {
        const bool take_left =
            left_open && (right == spaces.size() || left_distance < right_distance);
        const std::size_t taken = take_left ? left : right;
        if (taken == spaces.size() || need < spaces[taken].size) {
            return std::min(taken, spaces.size() - 1);
        }
        if (!take_left) {
            if (++right < spaces.size()) {
                right_distance = spaces[right].start - ideal;
            }
        } else if (left == 0) {
            left_open = false;
        } else {
            left_distance = ideal - spaces[--left].end;
        }
    }
}

// Finds room for the new nodes of each level without moving an old one: each goes into the free
// space nearest to the mean height of its neighbours, and is then pulled towards them inside it.
//
// Reads   level_nodes, y of old nodes, neighbour lists, old_info
// Writes  y of new nodes; x is 0
// Needs   restore_old_levels, make_y_shifts, place_nodes_on_levels: old nodes of a level by y, the
//         new ones behind them
// Leaves  old nodes where they are; every level is finished before the next is begun
// Space   owner-relative
void IncLayout::calculate_new_nodes_y_coords() {
    // The old nodes of a level stand first, unless a phase of a derived layout has seen to it.
    const bool old_stand_first = knows_all_phases();
    for (std::size_t k = 0; k < level_nodes.size(); ++k) {
        std::vector<Node>& level = level_nodes[k];
        if (old_stand_first && !level.empty() && !_is_new(level.back())) {
            continue;
        }
        const auto first =
            std::find_if(level.begin(), level.end(), [this](const Node& n) { return _is_new(n); });
        if (first == level.end()) {
            continue;
        }
        place_new_nodes_of(level, first);
        if (k < standings.size()) {
            const auto old_count = static_cast<std::size_t>(first - level.begin());
            standings[k].resize(std::min(standings[k].size(), old_count));
        }
    }
}

// Deliberate: from the first new node on all nodes of a level count as new, whatever they are.
void IncLayout::place_new_nodes_of(std::vector<Node>& level, node_iterator first) {
    std::vector<FreeSpace> spaces = free_spaces(level.begin(), first);
    std::vector<std::vector<Node>> planned(spaces.size());
    for (auto n = first; n != level.end(); ++n) {
        const double ideal = ideal_y(*n);
        n->SetPosition(0, ideal);
        std::size_t space = 0;
        if (spaces.size() > 1 && ideal >= spaces[0].end) {
            const double need = _get_height(*n) + gap_of(*n);
            space = _nearest_space(spaces, ideal, need);
            spaces[space].size -= need;
        }
        planned[space].push_back(*n);
    }
    for (std::size_t s = 0; s < spaces.size(); ++s) {
        if (planned[s].empty()) {
            continue;
        }
        // The space above all old nodes is filled from its lower end, which is the top of the old
        // drawing. A level without old nodes starts at 0.
        const bool above_all = s == 0 && spaces.size() > 1;
        pack(planned[s], above_all, above_all ? spaces[s].end : s == 0 ? 0 : spaces[s].start);
        force_adjust_block(planned[s].begin(), planned[s].end(), DEPEND_ON_BOTH, true,
                           spaces[s].start + gap_of(planned[s].front()) / 2, spaces[s].end);
    }
}

// The free stretches around the old nodes of a level, which stand in the order of their y.
std::vector<IncLayout::FreeSpace> IncLayout::free_spaces(node_iterator first, node_iterator last) {
    std::vector<FreeSpace> spaces;
    double y = FAR_ABOVE;
    for (auto n = first; n != last; ++n) {
        const double half_gap = gap_of(*n) / 2;
        const double top = n->GetPosition().y - half_gap;
        if (y < top) {
            spaces.push_back(FreeSpace{y, top, top - y});
        }
        y = n->GetPosition().y + _get_height(*n) + half_gap;
    }
    spaces.push_back(FreeSpace{y, FAR_BELOW, FAR_BELOW - y});
    return spaces;
}

// The mean centre of the neighbours that have a usable y: those on the next lower level, which are
// placed already, and the old ones on the next higher. 0 without any.
double IncLayout::ideal_y(const Node& node) {
    double sum = 0;
    int count = 0;
    const auto add = [&](const Node& n) {
        sum += n.GetPosition().y + _get_height(n) / 2;
        ++count;
    };
    LocalNodeInfo& info = local_info[node];
    for (const NodeEdgePair& pair : info.in_neighbours) {
        add(pair.node);
    }
    for (const NodeEdgePair& pair : info.out_neighbours) {
        if (!_is_new(pair.node)) {
            add(pair.node);
        }
    }
    return count > 0 ? sum / count : 0;
}

// Stacks the nodes planned for a space by their ideal y: down from its start, or up from its end
// for the space above the old drawing.
void IncLayout::pack(std::vector<Node>& planned, bool upwards, double from) {
    std::stable_sort(planned.begin(), planned.end(), NodeByYComparator());
    double y = from;
    if (upwards) {
        for (auto n = planned.rbegin(); n != planned.rend(); ++n) {
            const double half_gap = gap_of(*n) / 2;
            y -= half_gap + _get_height(*n);
            n->SetPosition(0, y);
            y -= half_gap;
        }
        return;
    }
    for (Node& n : planned) {
        const double half_gap = gap_of(n) / 2;
        y += half_gap;
        n.SetPosition(0, y);
        y += _get_height(n) + half_gap;
    }
}

} // namespace nurvex7
