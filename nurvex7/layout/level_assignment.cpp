#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <deque>
#include <functional>
#include <set>
#include <utility>

namespace nurvex7 {

// Gives every owned node its level: longest paths from the start nodes, counted from 1. Cycles are
// broken by marks on edges; no edge is ever turned about.
//
// Reads   nodes, the graph
// Writes  visited, order of local_info; reversed, flat, marked of edges; level in cur_info
// Needs   empty local_info
// Leaves  levels from 1 on; reversed and flat judged by level. A node that only the far end of an
//         edge knows about, as removals can leave it, may stay on -1
// Space   none
void IncLayout::determine_levels() {
    std::vector<std::vector<Node>> components;
    find_connectivity_components(&nodes, &components);
    for (std::vector<Node>& component : components) {
        enumerate_connectivity_component(&component);
    }
    mark_reversed_edges(&nodes, true);
    mark_levels(&nodes);
    mark_reversed_edges(&nodes, false);
}

// The same for an update: old nodes keep their level. A component in which all is new is laid out
// as in a full run.
//
// Reads   nodes, old_info, level of cur_info as restored
// Writes  as determine_levels
// Needs   restore_old_levels before it
// Leaves  a level for every node; 0 for one that goes before the old first level
// Space   none
void IncLayout::determine_new_nodes_levels() {
    std::vector<std::vector<Node>> components;
    find_connectivity_components(&nodes, &components);
    for (std::vector<Node>& component : components) {
        const bool all_new = std::all_of(component.begin(), component.end(),
                                         [this](const Node& n) { return _is_new(n); });
        if (all_new) {
            enumerate_connectivity_component(&component);
            mark_reversed_edges(&component, true);
            mark_levels(&component);
        } else {
            mark_new_nodes_levels(&component);
        }
    }
    mark_reversed_edges(&nodes, false);
}

bool IncLayout::passed_over(const Node& node) const {
    return !keep_hidden && IsFlagSet(node, NODE_HIDDEN);
}

void IncLayout::find_connectivity_components(std::vector<Node>* list,
                                             std::vector<std::vector<Node>>* components) {
    for (const Node& n : *list) {
        local_info[n].visited = false;
    }
    components->clear();
    components->reserve(std::max<std::size_t>(components->capacity(), 10));
    for (const Node& n : *list) {
        if (!passed_over(n) && !local_info[n].visited) {
            components->emplace_back();
            collect_connectivity_component(n, &components->back());
        }
    }
}

// Depth first, children before parents: the order in which a component lists its nodes decides ties
// further on. The walk keeps its own stack, as the path can be as long as the graph is large.
void IncLayout::collect_connectivity_component(Node start, std::vector<Node>* component) {
    struct Frame {
        std::span<const NodeEdgePair> children;
        std::span<const NodeEdgePair> parents;
        std::size_t next;
    };
    std::vector<Frame> open;
    const auto enter = [&](const Node& n) {
        local_info[n].visited = true;
        component->push_back(n);
        open.push_back(Frame{children_of(n), parents_of(n), 0});
    };
    enter(start);
    while (!open.empty()) {
        Frame& frame = open.back();
        const std::size_t at = frame.next++;
        if (at == frame.children.size() + frame.parents.size()) {
            open.pop_back();
            continue;
        }
        const Node& neighbour = at < frame.children.size()
                                    ? frame.children[at].node
                                    : frame.parents[at - frame.children.size()].node;
        if (!passed_over(neighbour) && !local_info[neighbour].visited) {
            enter(neighbour);
        }
    }
}

namespace {

/// Numbers the nodes of one component from both ends so that few edges run against the numbers:
/// the greedy heuristic for feedback arc sets of Eades, Lin and Smyth (1993), in sweeps over the
/// component. Nodes and edges are places in the component; loops take no part.
///
/// A sweep looks at every node that has no number yet; here it goes from one node that can take a
/// number to the next, which gives the same numbers without looking at the others.
class _Enumeration {
public:
    /// An edge stands for a neighbour of each of its ends, and ends doing so when a node that knows
    /// it takes its number. After removals one end may not know the edge of the other; such a
    /// neighbour stays unfinished, and may not even be of this component.
    struct EdgeEnds {
        int head = -1; ///< node whose incoming neighbour the edge stands for, -1 if none
        int tail = -1; ///< node whose outgoing neighbour the edge stands for, -1 if none
        bool marked = false;
    };
    struct Member {
        std::vector<int> edges; ///< all that the node knows
        int in = 0;             ///< unfinished neighbours
        int out = 0;
        bool is_source = false; ///< no incoming edge at all, loops included
        bool is_sink = false;
        int order = -1;
    };

    std::vector<Member> members;
    std::vector<EdgeEnds> edges;

    void number_all() {
        back = count() - 1;
        first_sweep();
        sweeping = true;
        for (int i = 0; i < count(); ++i) {
            if (at(i).order == -1) {
                enter(i);
            }
        }
        while (!surplus.empty()) {
            if (!sweep()) {
                // Only here is a cycle cut: the node with the largest surplus of unfinished
                // outgoing over unfinished incoming neighbours, the first of its kind, goes first.
                finish(surplus.begin()->second, front++);
            }
        }
    }

private:
    int count() const { return static_cast<int>(members.size()); }
    Member& at(int i) { return members[static_cast<std::size_t>(i)]; }

    // Deliberate: all sources share the number 0. They cannot be joined to each other.
    void first_sweep() {
        for (int i = 0; i < count(); ++i) {
            if (at(i).is_source) {
                front = 1;
                finish(i, 0);
            } else if (at(i).is_sink) {
                finish(i, back--);
            }
        }
    }

    bool sweep() {
        bool progress = false;
        for (auto next = ready.begin(); next != ready.end();) {
            const int i = *next;
            progress = true;
            finish(i, at(i).in == 0 ? front++ : back--);
            next = ready.upper_bound(i);
        }
        return progress;
    }

    void finish(int i, int number) {
        leave(i);
        at(i).order = number;
        for (const int place : at(i).edges) {
            EdgeEnds& edge = edges[static_cast<std::size_t>(place)];
            if (!edge.marked) {
                edge.marked = true;
                lose_neighbour(edge.head, &Member::in);
                lose_neighbour(edge.tail, &Member::out);
            }
        }
    }

    void lose_neighbour(int i, int Member::*side) {
        if (i < 0 || at(i).order != -1) {
            return;
        }
        leave(i);
        --(at(i).*side);
        if (sweeping) {
            enter(i);
        }
    }

    void enter(int i) {
        surplus.emplace(at(i).in - at(i).out, i);
        if (at(i).in == 0 || at(i).out == 0) {
            ready.insert(i);
        }
    }

    void leave(int i) {
        surplus.erase({at(i).in - at(i).out, i});
        ready.erase(i);
    }

    int front = 0;
    int back = 0;
    bool sweeping = false;
    std::set<int> ready;                   ///< open nodes that can take a number, by place
    std::set<std::pair<int, int>> surplus; ///< open nodes by unfinished in minus out, then place
};

} // namespace

void IncLayout::enumerate_connectivity_component(std::vector<Node>* component) {
    _Enumeration enumeration;
    enumeration.members.resize(component->size());
    IdMap<int> place; // of an edge in the enumeration
    const auto collect = [&](std::size_t i, std::span<const NodeEdgePair> pairs,
                             int _Enumeration::EdgeEnds::*end, int _Enumeration::Member::*side) {
        const Node* last = nullptr;
        for (const NodeEdgePair& pair : pairs) {
            if (pair.node == (*component)[i]) {
                continue;
            }
            const int known = static_cast<int>(enumeration.edges.size());
            const int edge = place.find_or_make(pair.edge.GetID(), known);
            if (edge == known) {
                enumeration.edges.emplace_back();
                enumeration.edges.back().marked = local_info[pair.edge].marked;
            }
            enumeration.members[i].edges.push_back(edge);
            // The first edge to a neighbour stands for it, whatever becomes of the others.
            if ((last == nullptr || *last != pair.node) && !passed_over(pair.node)) {
                enumeration.edges[static_cast<std::size_t>(edge)].*end = static_cast<int>(i);
                enumeration.members[i].*side += local_info[pair.edge].marked ? 0 : 1;
            }
            last = &pair.node;
        }
    };
    for (std::size_t i = 0; i < component->size(); ++i) {
        const Node& n = (*component)[i];
        collect(i, parents_of(n), &_Enumeration::EdgeEnds::head, &_Enumeration::Member::in);
        collect(i, children_of(n), &_Enumeration::EdgeEnds::tail, &_Enumeration::Member::out);
        enumeration.members[i].is_source = _degree(parents_of(n)) == 0;
        enumeration.members[i].is_sink = _degree(children_of(n)) == 0;
    }
    enumeration.number_all();
    for (std::size_t i = 0; i < component->size(); ++i) {
        local_info[(*component)[i]].order = enumeration.members[i].order;
        _mark_edges((*component)[i]);
    }
}

void IncLayout::_mark_edges(const Node& node) {
    for (const NodeEdgePair& pair : parents_of(node)) {
        local_info[pair.edge].marked = true;
    }
    for (const NodeEdgePair& pair : children_of(node)) {
        local_info[pair.edge].marked = true;
    }
}

int IncLayout::_degree(graph_ptr2<IGraphSet<NodeEdgePair>> set) {
    std::vector<NodeEdgePair> pairs;
    for (int i = 0; i < set->GetCount(); ++i) {
        pairs.push_back(set->GetItem(i));
    }
    return _degree(std::span<const NodeEdgePair>(pairs));
}

int IncLayout::_degree(std::span<const NodeEdgePair> set) {
    int count = 0;
    const Node* last = nullptr;
    for (const NodeEdgePair& pair : set) {
        if ((last == nullptr || *last != pair.node) && !passed_over(pair.node)) {
            ++count;
            last = &pair.node;
        }
    }
    return count;
}

// A run of pairs with one neighbour is judged by its first pair; loops never count.
int IncLayout::_degree_ex(const Node& node, bool LocalEdgeInfo::*member, Order order, bool both) {
    const auto count = [&](std::span<const NodeEdgePair> set, bool wanted) {
        int found = 0;
        const Node* last = nullptr;
        for (const NodeEdgePair& pair : set) {
            if (last != nullptr && *last == pair.node) {
                continue;
            }
            last = &pair.node;
            if (pair.node != node && !passed_over(pair.node) &&
                local_info[pair.edge].*member == wanted) {
                ++found;
            }
        }
        return found;
    };
    const bool in = order == ORDER_IN;
    int sum = count(in ? parents_of(node) : children_of(node), false);
    if (both) {
        sum += count(in ? children_of(node) : parents_of(node), true);
    }
    return sum;
}

void IncLayout::mark_reversed_edges(std::vector<Node>* list, bool by_order) {
    const auto place = [&](const Node& n) {
        return by_order ? local_info[n].order : (*cur_info)[n].level;
    };
    for (const Node& n : *list) {
        if (passed_over(n)) {
            continue;
        }
        const int here = place(n);
        for (const NodeEdgePair& pair : children_of(n)) {
            if (!passed_over(pair.node)) {
                const int there = place(pair.node);
                LocalEdgeInfo& info = local_info[pair.edge];
                info.flat = here == there;
                info.reversed = here > there;
            }
        }
    }
}

void IncLayout::mark_levels(std::vector<Node>* list) {
    std::vector<Node> starts;
    for (const Node& n : *list) {
        if (_degree_ex(n, &LocalEdgeInfo::reversed, ORDER_IN, true) == 0) {
            starts.push_back(n);
        }
    }
    if (keep_hidden) {
        // No start node can be reached from another one, so all paths can be followed at once.
        for (const Node& n : starts) {
            (*cur_info)[n].level = 1;
        }
        raise_levels(starts, 1);
    } else {
        // A hidden start node leads to visible ones, which start again when it is their turn.
        for (const Node& n : starts) {
            (*cur_info)[n].level = 1;
            set_node_level(n, 1);
        }
    }
    if (starts.size() > 1) {
        tighten_start_nodes(&starts);
    }
}

void IncLayout::set_node_level(const Node& node, int level) {
    raise_levels({node}, level);
}

namespace {

using successors_t = std::function<std::vector<const Node*>(const Node&)>;

/// All that can be reached from some nodes, in topological order: a depth-first walk with a stack
/// of its own, read backwards (Tarjan, "Edge-disjoint spanning trees and depth-first search",
/// 1976). On a cycle it stops where it has been.
class _Reach {
public:
    struct Step {
        const Node* node;
        std::vector<int> next; ///< steps of the successors
    };

    explicit _Reach(successors_t f) : successors_of(std::move(f)) {}

    /// The step of a node, after a walk from it where it was not reached before.
    int walk_from(const Node& source) {
        if (const int* const known = place.find(source.GetID())) {
            return *known;
        }
        const int first = enter(source);
        while (!open.empty()) {
            Frame& frame = open.back();
            if (frame.next == frame.successors.size()) {
                finished.push_back(frame.step);
                open.pop_back();
                continue;
            }
            const std::size_t here = static_cast<std::size_t>(frame.step);
            const Node& successor = *frame.successors[frame.next++];
            const int* const known = place.find(successor.GetID());
            const int there = known != nullptr ? *known : enter(successor);
            steps[here].next.push_back(there);
        }
        return first;
    }

    const std::vector<Step>& get_steps() const { return steps; }
    std::vector<int> topological_order() const {
        return std::vector<int>(finished.rbegin(), finished.rend());
    }

private:
    struct Frame {
        int step;
        std::vector<const Node*> successors;
        std::size_t next;
    };

    int enter(const Node& n) {
        const int step = static_cast<int>(steps.size());
        place[n.GetID()] = step;
        steps.push_back(Step{&n, {}});
        open.push_back(Frame{step, successors_of(n), 0});
        return step;
    }

    successors_t successors_of;
    std::vector<Step> steps;
    IdMap<int> place; // in `steps`, by node id
    std::vector<Frame> open;
    std::vector<int> finished;
};

} // namespace

// Where the levels lead on from a node: its children, and its parents over reversed edges.
std::vector<const Node*> IncLayout::successors_of(const Node& n) {
    std::vector<const Node*> found;
    const auto collect = [&](std::span<const NodeEdgePair> pairs, bool reversed) {
        for (const NodeEdgePair& pair : pairs) {
            if (!passed_over(pair.node) && pair.node != n &&
                local_info[pair.edge].reversed == reversed) {
                found.push_back(&pair.node);
            }
        }
    };
    collect(children_of(n), false);
    collect(parents_of(n), true);
    return found;
}

// Longest paths from the sources, with the results of a walk that follows every path: a node takes
// the highest level that reaches it, and stops a path that arrives below what it has. Following
// paths one by one takes exponential time on dense graphs, so the nodes are taken in topological
// order, when all that reaches them is known.
void IncLayout::raise_levels(const std::vector<Node>& sources, int level) {
    _Reach reach([this](const Node& n) { return successors_of(n); });
    std::vector<int> first;
    for (const Node& source : sources) {
        first.push_back(reach.walk_from(source));
    }
    std::vector<int> arrival(reach.get_steps().size(), INT_MIN);
    for (const int step : first) {
        arrival[static_cast<std::size_t>(step)] = level;
    }
    for (const int i : reach.topological_order()) {
        const _Reach::Step& step = reach.get_steps()[static_cast<std::size_t>(i)];
        const int arrived = arrival[static_cast<std::size_t>(i)];
        NodeInfo& info = (*cur_info)[*step.node];
        if (arrived == INT_MIN || arrived < info.level) {
            continue;
        }
        info.level = arrived;
        for (const int j : step.next) {
            int& further = arrival[static_cast<std::size_t>(j)];
            further = std::max(further, arrived + 1);
        }
    }
}

// A start node stands directly before its nearest successor. Only its own level moves.
void IncLayout::tighten_start_nodes(std::vector<Node>* starts) {
    for (const Node& s : *starts) {
        int min = INT_MAX;
        for (const Node* const successor : successors_of(s)) {
            min = std::min(min, (*cur_info)[*successor].level);
        }
        if (min != INT_MAX && min > 2) {
            (*cur_info)[s].level = min - 1;
        }
    }
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
    const auto old_levels = [&](std::span<const NodeEdgePair> pairs) {
        std::vector<int> levels;
        for (const NodeEdgePair& pair : pairs) {
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
