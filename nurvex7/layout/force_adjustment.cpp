#include "nurvex7/layout/inc_layout.h"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <vector>

namespace nurvex7 {

// Straightens edges: moves the nodes of each level along it, never past one another. Real nodes
// settle first, in two sweeps; the dummy nodes of long edges last, each run of them inside the gap
// between the real nodes around it.
//
// Reads   level_nodes, neighbour lists, sizes, edge widths, wrap_count
// Writes  y of the nodes on levels 1 to L-2; nothing else
// Needs   calculate_initial_y_coords before it: neighbours already keep their gaps
// Leaves  the order along every level; y may be negative, calculate_x_coords lifts it back
// Space   owner-relative
void IncLayout::force_adjust() {
    if (level_nodes.size() < 3) {
        return;
    }
    const std::size_t last = level_nodes.size() - 2;
    for (std::size_t k = 2; k <= last; ++k) {
        force_adjust_block(level_nodes[k].begin(), level_nodes[k].end(), DEPEND_ON_IN, false,
                           -DBL_MAX, DBL_MAX);
    }
    if (use_force_adjust) {
        for (std::size_t k = last - 1; k >= 1; --k) {
            force_adjust_block(level_nodes[k].begin(), level_nodes[k].end(), DEPEND_ON_OUT, false,
                               -DBL_MAX, DBL_MAX);
        }
    }
    for (std::size_t k = last - 1; k >= 1; --k) {
        straighten_dummy_runs(level_nodes[k]);
    }
}

// Deliberate: the dummy nodes of level L-2 take no part; nothing behind them could straighten them.
void IncLayout::straighten_dummy_runs(std::vector<Node>& level) {
    const auto is_real = [](const Node& n) { return !n.IsDummy(); };
    double lower = -DBL_MAX;
    for (auto at = level.begin(); at != level.end();) {
        if (is_real(*at)) {
            lower = at->GetPosition().y + _get_height(*at) + node_gap / 2;
            ++at;
            continue;
        }
        const auto end = std::find_if(at, level.end(), is_real);
        const double upper = end != level.end() ? end->GetPosition().y - node_gap / 2 : DBL_MAX;
        force_adjust_block(at, end, DEPEND_ON_OUT, true, lower, upper);
        at = end;
    }
}

namespace {

/// What pulls on one node of a run. A node that nothing pulls on is free: it is carried by the
/// block around it. One that is passed over takes no part in forces at all.
struct Pull {
    double force = 0;
    bool free = true;
};

/// The y of a run, moved as rigid blocks by the mean force of their members.
///
/// A block is a stretch in which forces do not rise from top to bottom: each node pushes down at
/// least as hard as the one below it, so they collide and move together. Where the force rises the
/// two sides move apart, and the block ends.
void _settle_blocks(const std::vector<Pull>& pulls, double lower, std::vector<double>& y) {
    std::size_t block = 0;
    double sum = 0;
    int count = 0;
    double prev = DBL_MAX;
    const auto move_block = [&](std::size_t end) {
        double shift = sum / count;
        std::size_t first = block;
        if (lower > y[block] + shift) {
            shift = lower - y[block];
            if (y[block] + shift < lower) {
                first = 0; // rounding left the block short of the bound: all above it move along
            }
        }
        for (std::size_t j = first; j < end; ++j) {
            y[j] += shift;
        }
        return shift;
    };
    for (std::size_t i = 0; i < y.size(); ++i) {
        if (pulls[i].free) {
            continue;
        }
        if (pulls[i].force > prev) {
            // The block behind cannot shift by less than this one did: the gap between the two
            // never shrinks.
            lower = y[i] + move_block(i);
            block = i;
            sum = 0;
            count = 0;
        }
        prev = pulls[i].force;
        sum += pulls[i].force;
        ++count;
    }
    if (count > 0) {
        move_block(y.size());
    }
}

} // namespace

void IncLayout::force_adjust_block(node_iterator first, node_iterator last,
                                   DependenceLevel dependence, bool with_dummies, double lower,
                                   double upper) {
    if (first == last) {
        return;
    }
    std::vector<Pull> pulls;
    std::vector<double> y;
    for (auto n = first; n != last; ++n) {
        Pull pull;
        if (with_dummies || !n->IsDummy()) {
            pull.free = !force_on(*n, dependence, pull.force);
        }
        pulls.push_back(pull);
        y.push_back(n->GetPosition().y);
    }
    _settle_blocks(pulls, lower, y);
    hold_upper_bound(first, last, upper, y);
    for (auto n = first; n != last; ++n) {
        n->SetPosition(n->GetPosition().x, y[static_cast<std::size_t>(n - first)]);
    }
}

// The mean y distance from a node to the neighbours that it depends on. A real node feels only real
// neighbours, so that a long edge does not pull on its ends here; a dummy node feels all of them.
// False where nothing pulls.
bool IncLayout::force_on(const Node& n, DependenceLevel dependence, double& force) {
    const bool dummy = n.IsDummy();
    double centre = n.GetPosition().y;
    if (!dummy) {
        centre += n.GetSize().height / 2;
    }
    double sum = 0;
    int count = 0;
    const auto feel = [&](const NodeEdgePair& pair) {
        // Deliberate: the exit side is measured for neighbours of both directions, so that also a
        // neighbour to the right is taken at its last inner break node.
        const tamsel7::point<double> p = get_inout_coords(pair, ORDER_OUT);
        if (dummy || !pair.node.IsDummy()) {
            ++count;
            sum += p.y - centre;
        }
    };
    LocalNodeInfo& info = local_info[n];
    if (dependence != DEPEND_ON_OUT) {
        std::for_each(info.in_neighbours.begin(), info.in_neighbours.end(), feel);
    }
    if (dependence != DEPEND_ON_IN) {
        for (const NodeEdgePair& pair : info.out_neighbours) {
            if (dependence == DEPEND_ON_OUT || !_is_new(pair.node)) {
                feel(pair);
            }
        }
    }
    if (count > 0) {
        force = sum / count;
    }
    return count > 0;
}

// Pushes the end of a run back up inside its upper bound, where it has one; the upper bound wins
// over the lower.
void IncLayout::hold_upper_bound(node_iterator first, node_iterator last, double upper,
                                 std::vector<double>& y) {
    double bound = upper;
    for (auto n = last; n != first;) {
        --n;
        double& top = y[static_cast<std::size_t>(n - first)];
        const double gap = gap_of(*n);
        const double bottom = top + _get_height(*n) + gap / 2;
        if (bottom <= bound) {
            return;
        }
        top -= bottom - bound;
        bound = top - gap / 2;
    }
}

} // namespace nurvex7
