#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/level_graph.h"
#include "nurvex7/layout/run_nodes.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <deque>
#include <memory>
#include <span>
#include <vector>

namespace nurvex7 {

namespace {

/// New nodes that hang together.
struct NewNodes {
    std::vector<Node> nodes;
    bool beside_old = false; ///< an old node is in their component
};

/// Finds the new nodes of a run by groups, without a look at the components that have none.
///
/// An edge that only one of its ends knows, as removals can leave it, may or may not join two
/// components, by which end is met first. So may a node that is not of the run. Then the components
/// have to be walked as a full run does.
class NewGroups {
public:
    NewGroups(const RunNodes& of, const std::vector<Node>& list, bool without_hidden)
        : run(of), nodes(list), hidden_are_passed_over(without_hidden),
          met(static_cast<std::size_t>(of.get_count()), 0) {}

    /// Order   by the first node of each group in the list
    std::vector<NewNodes> find() {
        std::vector<NewNodes> groups;
        for (int i = 0; i < run.get_count() && !leads_elsewhere; ++i) {
            if (is_passed_over(i) || !run.at(i).is_new() || has_met(i)) {
                continue;
            }
            groups.emplace_back();
            collect_from(i, groups.back());
        }
        return groups;
    }
    bool left_the_run() const { return leads_elsewhere; }

private:
    bool is_passed_over(int i) const { return hidden_are_passed_over && run.at(i).hidden; }
    bool has_met(int i) const { return met[static_cast<std::size_t>(i)] != 0; }

    void collect_from(int start, NewNodes& group) {
        enter(start);
        while (!open.empty()) {
            const int i = open.back();
            open.pop_back();
            group.nodes.push_back(nodes[static_cast<std::size_t>(i)]);
            for (const auto links : {run.children_of(i), run.parents_of(i)}) {
                for (const RunNodes::Link& link : links) {
                    pass_on_to(run.number_of(link.node), group);
                }
            }
        }
    }

    void pass_on_to(int i, NewNodes& group) {
        if (i < 0) {
            leads_elsewhere = true;
        } else if (is_passed_over(i)) {
            return;
        } else if (!run.at(i).is_new()) {
            group.beside_old = true;
        } else if (!has_met(i)) {
            enter(i);
        }
    }

    void enter(int i) {
        met[static_cast<std::size_t>(i)] = 1;
        open.push_back(i);
    }

    const RunNodes& run;
    const std::vector<Node>& nodes;
    bool hidden_are_passed_over;
    bool leads_elsewhere = false;
    std::vector<char> met;
    std::vector<int> open;
};

} // namespace

// The same for an update: old nodes keep their level. A component in which all is new is laid out
// as in a full run; one in which nothing is new is not looked at.
//
// Reads   nodes, old_info, level of cur_info as restored
// Writes  as determine_levels; reversed and flat only where they are true or have been written
// Needs   restore_old_levels before it
// Leaves  a level for every node; 0 for one that goes before the old first level
// Space   none
void IncLayout::determine_new_nodes_levels() {
    take_run_nodes();
    if (!assign_levels_by_groups()) {
        level_graph = make_level_graph(nodes);
        std::vector<std::vector<Node>> components;
        find_connectivity_components(&nodes, &components);
        for (std::vector<Node>& component : components) {
            const bool all_new = std::all_of(component.begin(), component.end(),
                                             [this](const Node& n) { return _is_new(n); });
            assign_new_levels(component, all_new);
        }
        level_graph.reset();
        run_nodes->take_notes_back();
    }
    mark_reversed_edges(&nodes, false);
}

// False where the new nodes cannot be told from the rest without a look at every component.
bool IncLayout::assign_levels_by_groups() {
    if (!structure->IsTwoWay()) {
        return false;
    }
    NewGroups finder(*run_nodes, nodes, !keep_hidden);
    std::vector<NewNodes> groups = finder.find();
    if (finder.left_the_run()) {
        return false;
    }
    for (NewNodes& group : groups) {
        if (group.beside_old) {
            assign_new_levels(group.nodes, false);
            continue;
        }
        level_graph = make_level_graph(group.nodes);
        std::vector<std::vector<Node>> in_order;
        find_connectivity_components(&group.nodes, &in_order);
        assign_new_levels(in_order.front(), true);
        level_graph.reset();
    }
    run_nodes->take_notes_back();
    return true;
}

void IncLayout::assign_new_levels(std::vector<Node>& component, bool all_new) {
    if (!all_new) {
        mark_new_nodes_levels(&component);
        return;
    }
    enumerate_connectivity_component(&component);
    mark_reversed_edges(&component, true);
    mark_levels(&component);
}

namespace {

// The level between the lowest and the highest of both sides on which the fewest edges would fail
// to run forwards; among equals the lowest. Both sides are in ascending order.
int _cheapest_level(const std::vector<int>& parents, const std::vector<int>& children) {
    const int lo = std::min(parents.front(), children.front());
    const int hi = std::max(parents.back(), children.back());
    const auto at = [lo](int level) { return static_cast<std::size_t>(level - lo); };
    std::vector<int> change(at(hi) + 2, 0); // of the penalty from one level to the next
    for (const int c : children) {
        ++change[at(c)];
    }
    for (const int p : parents) {
        ++change[0];
        --change[at(p) + 1];
    }
    int best = lo;
    int penalty = 0;
    int lowest = INT_MAX;
    for (int level = lo; level <= hi; ++level) {
        penalty += change[at(level)];
        if (penalty < lowest) {
            lowest = penalty;
            best = level;
        }
    }
    return best;
}

} // namespace

// New nodes go beside their old neighbours, first come, first served.
//
// Deliberate: a node without an old neighbour goes back to the queue, for ever if need be. The
// caller adds nodes so that each has an old neighbour, or so that its whole component is new.
void IncLayout::mark_new_nodes_levels(std::vector<Node>* component) {
    std::deque<Node> queue;
    for (const Node& n : *component) {
        if (!passed_over(n) && !old_info[n].is_old) {
            queue.push_back(n);
        }
    }
    const auto old_levels = [&](const StructureIndex::Pairs& pairs) {
        std::vector<int> levels;
        for (const StructureIndex::Pair& pair : pairs) {
            const NodeInfo& old = old_info[pair.node];
            if (!passed_over(pair.node) && old.is_old && !old.was_hidden) {
                levels.push_back(old.level);
            }
        }
        std::sort(levels.begin(), levels.end());
        return levels;
    };
    while (!queue.empty()) {
        const Node n = queue.front();
        queue.pop_front();
        const std::vector<int> parents = old_levels(parents_of(n));
        const std::vector<int> children = old_levels(children_of(n));
        if (parents.empty() && children.empty()) {
            queue.push_back(n);
        } else if (parents.empty()) {
            (*cur_info)[n].level = children.front() - 1;
        } else if (children.empty()) {
            (*cur_info)[n].level = parents.back() + 1;
        } else {
            (*cur_info)[n].level = _cheapest_level(parents, children);
        }
    }
}

} // namespace nurvex7
