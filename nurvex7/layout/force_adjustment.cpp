#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <span>
#include <vector>

namespace nurvex7 {

/// Nodes and their neighbours in numbers: gathered once, moved as often as need be, stored once.
///
/// Nodes are places, y is an array. The neighbours take part with their y as well; only the nodes
/// that were added are ever moved.
class IncLayout::ForceField {
public:
    /// A stretch of nodes along a level, by their turn.
    struct Stretch {
        std::size_t first;
        std::size_t last;
    };

    explicit ForceField(IncLayout& l) : layout(l) {}

    Stretch add(const_node_iterator first, const_node_iterator last);
    /// Gathers what pulls on the nodes that have been added. With `old_only` new neighbours on the
    /// exit side do not.
    void gather_neighbours(bool old_only);
    /// force_adjust_block, in numbers.
    void adjust(Stretch block, DependenceLevel dependence, bool with_dummies, double lower,
                double upper);
    void straighten_dummy_runs(Stretch level);
    /// Stores the y of the nodes that have been added; x stays.
    void store() const;

private:
    /// A neighbour, and how far below its y the edge meets it.
    struct Neighbour {
        int place;
        double offset;
    };
    using Side = PlacedLists<Neighbour>;

    /// What pulls on one node of a block. A node that nothing pulls on is free: it is carried by
    /// the block around it. One that is passed over takes no part in forces at all.
    struct Pull {
        double force = 0;
        bool free = true;
    };

    int find_or_enter(const Node& node);
    int enter(const Node& node);
    void gather(const std::vector<Join>& all);
    void gather(std::size_t base, const Segments& segments, bool old_only, Side& side);
    Pull pull_on(int place, DependenceLevel dependence) const;
    void settle_blocks(double lower);
    void hold_upper_bound(Stretch block, double upper);

    std::size_t place_at(std::size_t turn) const { return static_cast<std::size_t>(order[turn]); }
    bool is_dummy_at(std::size_t turn) const { return dummy[place_at(turn)] != 0; }
    double gap_at(std::size_t turn) const {
        return is_dummy_at(turn) ? layout.edge_gap : layout.node_gap;
    }
    double height_at(std::size_t turn) const { return layout._get_height(*nodes[place_at(turn)]); }

    IncLayout& layout;
    NodePlaces places;
    std::vector<int> order; ///< places by turn: as they were added
    std::vector<const Node*> nodes;
    std::vector<double> y;
    std::vector<double> half_height; ///< 0 for dummy nodes
    std::vector<char> dummy;
    std::size_t own = 0; ///< places that have been added; behind them come mere neighbours
    Side in;
    Side out;
    std::vector<Pull> pulls;     ///< of the block at work
    std::vector<double> block_y; ///< likewise
};

IncLayout::ForceField::Stretch IncLayout::ForceField::add(const_node_iterator first,
                                                          const_node_iterator last) {
    const std::size_t begin = order.size();
    const std::span<const Node> level(first, last);
    for_each_on_level(level, [this](const Node& n) { order.push_back(find_or_enter(n)); });
    own = nodes.size();
    return Stretch{begin, order.size()};
}

int IncLayout::ForceField::find_or_enter(const Node& node) {
    const int known = places.find(node);
    return known >= 0 ? known : enter(node);
}

int IncLayout::ForceField::enter(const Node& node) {
    const bool is_dummy = node.IsDummy();
    nodes.push_back(&node);
    y.push_back(node.GetPosition().y);
    half_height.push_back(is_dummy ? 0 : node.GetSize().height / 2);
    dummy.push_back(is_dummy ? 1 : 0);
    return places.enter(node);
}

void IncLayout::ForceField::gather_neighbours(bool old_only) {
    if (const std::vector<Join>* const all = layout.find_joins()) {
        gather(*all);
    } else {
        places.for_each_record(layout.local_info.node_info.get_map(), own,
                               [&](std::size_t place, const LocalNodeInfo& info) {
                                   gather(place, info.in_neighbours, false, in);
                                   gather(place, info.out_neighbours, old_only, out);
                               });
    }
    in.close(own);
    out.close(own);
}

// The neighbours of a whole drawing. What is not on a level that takes part, a port, is entered for
// its y alone.
void IncLayout::ForceField::gather(const std::vector<Join>& all) {
    const auto feel = [&](INodeImpl* base, INodeImpl* far, IEdgeImpl* edge, Side& side) {
        const int at = places.find(base);
        if (at < 0 || static_cast<std::size_t>(at) >= own) {
            return;
        }
        const graph_ptr<IGraphVis>& vis = layout.nodes.front().get_vis();
        const auto place = static_cast<std::size_t>(at);
        const int known = places.find(far);
        const int neighbour = known >= 0 ? known : enter(Node(vis, far));
        const bool is_dummy = dummy[static_cast<std::size_t>(neighbour)] != 0;
        if (is_dummy && dummy[place] != 0) {
            side.add(place, {neighbour, 0});
        } else if (!is_dummy) {
            const NodeEdgePair pair{Node(vis, far), Edge(vis, edge)};
            side.add(place, {neighbour, inout_offset(pair, ORDER_OUT)});
        }
    };
    for_each_ahead(
        all.size(),
        [&](std::size_t i) {
            feel(all[i].after, all[i].before, all[i].edge, in);
            feel(all[i].before, all[i].after, all[i].edge, out);
        },
        [&](std::size_t i) {
            prefetch_line(all[i].before);
            prefetch_line(all[i].after);
            prefetch(all[i].edge);
        },
        [&](std::size_t i) { prefetch(all[i].edge->known_vis); });
}

// The neighbours of one place. A real node feels only real neighbours, so that a long edge does not
// pull on its ends here; a dummy node feels all of them.
//
// Deliberate: the exit side is measured for neighbours of both directions, so that also a neighbour
// to the right is taken at its last inner break node.
void IncLayout::ForceField::gather(std::size_t base, const Segments& segments, bool old_only,
                                   Side& side) {
    for (const NodeEdgePair& pair : segments) {
        if (old_only && layout._is_new(pair.node)) {
            continue;
        }
        const int place = find_or_enter(pair.node);
        const bool is_dummy = dummy[static_cast<std::size_t>(place)] != 0;
        if (dummy[base] != 0 || !is_dummy) {
            side.add(base, {place, is_dummy ? 0 : inout_offset(pair, ORDER_OUT)});
        }
    }
}

// The mean y distance from a node to the neighbours that it depends on.
IncLayout::ForceField::Pull IncLayout::ForceField::pull_on(int at,
                                                           DependenceLevel dependence) const {
    const auto place = static_cast<std::size_t>(at);
    const double centre = y[place] + half_height[place];
    double sum = 0;
    std::size_t count = 0;
    const auto feel = [&](const Side& side) {
        for (const Neighbour& neighbour : side.of(place)) {
            sum += y[static_cast<std::size_t>(neighbour.place)] + neighbour.offset - centre;
        }
        count += side.of(place).size();
    };
    if (dependence != DEPEND_ON_OUT) {
        feel(in);
    }
    if (dependence != DEPEND_ON_IN) {
        feel(out);
    }
    return count > 0 ? Pull{sum / static_cast<double>(count), false} : Pull();
}

void IncLayout::ForceField::adjust(Stretch block, DependenceLevel dependence, bool with_dummies,
                                   double lower, double upper) {
    if (block.first == block.last) {
        return;
    }
    pulls.clear();
    block_y.clear();
    for (std::size_t turn = block.first; turn < block.last; ++turn) {
        const bool takes_part = with_dummies || !is_dummy_at(turn);
        pulls.push_back(takes_part ? pull_on(order[turn], dependence) : Pull());
        block_y.push_back(y[place_at(turn)]);
    }
    settle_blocks(lower);
    hold_upper_bound(block, upper);
    for (std::size_t turn = block.first; turn < block.last; ++turn) {
        y[place_at(turn)] = block_y[turn - block.first];
    }
}

// Moves the block at work in rigid parts by the mean force of their members.
//
// A part is a stretch in which forces do not rise from top to bottom: each node pushes down at
// least as hard as the one below it, so they collide and move together. Where the force rises the
// two sides move apart, and the part ends.
void IncLayout::ForceField::settle_blocks(double lower) {
    std::size_t part = 0;
    double sum = 0;
    int count = 0;
    double prev = DBL_MAX;
    const auto move_part = [&](std::size_t end) {
        double shift = sum / count;
        std::size_t first = part;
        if (lower > block_y[part] + shift) {
            shift = lower - block_y[part];
            if (block_y[part] + shift < lower) {
                first = 0; // rounding left the part short of the bound: all above it move along
            }
        }
        for (std::size_t j = first; j < end; ++j) {
            block_y[j] += shift;
        }
        return shift;
    };
    for (std::size_t i = 0; i < block_y.size(); ++i) {
        if (pulls[i].free) {
            continue;
        }
        if (pulls[i].force > prev) {
            // The part behind cannot shift by less than this one did: the gap between the two
            // never shrinks.
            lower = block_y[i] + move_part(i);
            part = i;
            sum = 0;
            count = 0;
        }
        prev = pulls[i].force;
        sum += pulls[i].force;
        ++count;
    }
    if (count > 0) {
        move_part(block_y.size());
    }
}

// Pushes the end of a block back up inside its upper bound, where it has one; the upper bound wins
// over the lower.
void IncLayout::ForceField::hold_upper_bound(Stretch block, double upper) {
    double bound = upper;
    for (std::size_t turn = block.last; turn > block.first; --turn) {
        double& top = block_y[turn - 1 - block.first];
        const double gap = gap_at(turn - 1);
        const double bottom = top + height_at(turn - 1) + gap / 2;
        if (bottom <= bound) {
            return;
        }
        top -= bottom - bound;
        bound = top - gap / 2;
    }
}

// Each run of dummy nodes inside the gap between the real nodes around it.
void IncLayout::ForceField::straighten_dummy_runs(Stretch level) {
    double lower = -DBL_MAX;
    for (std::size_t turn = level.first; turn < level.last;) {
        if (!is_dummy_at(turn)) {
            lower = y[place_at(turn)] + height_at(turn) + layout.node_gap / 2;
            ++turn;
            continue;
        }
        std::size_t end = turn;
        while (end < level.last && is_dummy_at(end)) {
            ++end;
        }
        const double upper = end < level.last ? y[place_at(end)] - layout.node_gap / 2 : DBL_MAX;
        adjust(Stretch{turn, end}, DEPEND_ON_OUT, true, lower, upper);
        turn = end;
    }
}

void IncLayout::ForceField::store() const {
    const auto impl_of = [this](std::size_t place) { return nodes[place]->get_impl().get(); };
    const auto store_y = [&](std::size_t place) {
        Node node = *nodes[place];
        node.SetPosition(node.GetPosition().x, y[place]);
    };
    for_each_ahead(
        own, store_y, [&](std::size_t place) { prefetch_line(impl_of(place)); },
        [&](std::size_t place) { prefetch_line(place_address(*impl_of(place))); });
}

// Straightens edges: moves the nodes of each level along it, never past one another. Real nodes
// settle first, in two sweeps; the dummy nodes of long edges last, each run of them inside the gap
// between the real nodes around it.
//
// Reads   level_nodes, neighbour lists, sizes, edge widths, wrap_count
// Writes  y of the nodes on levels 1 to L-2; nothing else
// Needs   calculate_initial_y_coords before it: neighbours already keep their gaps
// Leaves  the order along every level; y may be negative, calculate_x_coords lifts it back
// Space   owner-relative
//
// Deliberate: the dummy nodes of level L-2 take no part; nothing behind them could straighten them.
void IncLayout::force_adjust() {
    if (level_nodes.size() < 3) {
        return;
    }
    ForceField field(*this);
    std::vector<ForceField::Stretch> levels(1); // the entry level has no part in it
    const std::size_t last = level_nodes.size() - 2;
    for (std::size_t k = 1; k <= last; ++k) {
        levels.push_back(field.add(level_nodes[k].begin(), level_nodes[k].end()));
        count_steps(level_nodes[k].size());
    }
    field.gather_neighbours(/*old_only=*/false);
    for (std::size_t k = 2; k <= last; ++k) {
        field.adjust(levels[k], DEPEND_ON_IN, false, -DBL_MAX, DBL_MAX);
        count_steps(level_nodes[k].size());
    }
    if (use_force_adjust) {
        for (std::size_t k = last - 1; k >= 1; --k) {
            field.adjust(levels[k], DEPEND_ON_OUT, false, -DBL_MAX, DBL_MAX);
            count_steps(level_nodes[k].size());
        }
    }
    for (std::size_t k = last - 1; k >= 1; --k) {
        field.straighten_dummy_runs(levels[k]);
        count_steps(level_nodes[k].size());
    }
    field.store();
}

void IncLayout::force_adjust_block(node_iterator first, node_iterator last,
                                   DependenceLevel dependence, bool with_dummies, double lower,
                                   double upper) {
    ForceField field(*this);
    const ForceField::Stretch block = field.add(first, last);
    field.gather_neighbours(/*old_only=*/dependence == DEPEND_ON_BOTH);
    field.adjust(block, dependence, with_dummies, lower, upper);
    field.store();
}

} // namespace nurvex7
