#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/level_graph.h"
#include "nurvex7/layout/run_nodes.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace nurvex7 {

namespace {

// Depth first, children before parents: the order in which a component lists its nodes decides ties
// further on. The walk keeps its own stack, as the path can be as long as the graph is large. Calls
// `step` for each node.
template <typename F>
void _collect_component(LevelGraph& graph, int start, std::vector<int>& component, F step) {
    struct Frame {
        int node;
        std::size_t next;
    };
    std::vector<Frame> open;
    const auto enter = [&](int i) {
        graph.mark_visited(i, true);
        component.push_back(i);
        open.push_back(Frame{i, 0});
        step();
    };
    enter(start);
    while (!open.empty()) {
        Frame& frame = open.back();
        const std::span<const LevelGraph::Link> children = graph.children_of(frame.node);
        const std::span<const LevelGraph::Link> parents = graph.parents_of(frame.node);
        const std::size_t at = frame.next++;
        if (at == children.size() + parents.size()) {
            open.pop_back();
            continue;
        }
        const int neighbour =
            at < children.size() ? children[at].node : parents[at - children.size()].node;
        if (!graph.passed_over(neighbour) && !graph.is_visited(neighbour)) {
            enter(neighbour);
        }
    }
}

template <typename F>
std::vector<std::vector<int>> _find_components(LevelGraph& graph, const std::vector<int>& numbers,
                                               F step) {
    std::vector<std::vector<int>> components;
    for (const int i : numbers) {
        graph.mark_visited(i, false);
    }
    for (const int i : numbers) {
        if (!graph.passed_over(i) && !graph.is_visited(i)) {
            components.emplace_back();
            _collect_component(graph, i, components.back(), step);
        }
    }
    return components;
}

void _append_nodes(const LevelGraph& graph, const std::vector<int>& numbers,
                   std::vector<Node>& list) {
    list.reserve(list.size() + numbers.size());
    for (const int i : numbers) {
        list.push_back(graph.node_at(i));
    }
}

} // namespace

// Gives every owned node its level: longest paths from the start nodes, counted from 1. Cycles are
// broken by marks on edges; no edge is ever turned about.
//
// Reads   nodes, the graph
// Writes  level in cur_info; reversed and flat of edges; visited and order of nodes and marked of
//         edges, where somebody may look at them
// Needs   empty local_info
// Leaves  levels from 1 on; reversed and flat judged by level. A node that only the far end of an
//         edge knows about, as removals can leave it, may stay on -1
// Space   none
void IncLayout::determine_levels() {
    // The steps come past all records many times, in many orders. They lie side by side for that
    // long, and most are in no table afterwards: what is not there reads as what they say.
    const bool records_wait = collects_joins && local_info.edge_info.empty() &&
                              local_info.node_info.get_count_by_id() == 0 &&
                              cur_info->node_info.get_count_by_id() == 0;
    level_graph = make_level_graph(nodes, records_wait);
    const auto step = [this] { count_steps(1); };
    for (const std::vector<int>& component :
         _find_components(*level_graph, level_graph->numbers_of(nodes), step)) {
        level_graph->get_enumeration().number_all(component, step);
    }
    mark_reversed_edges(&nodes, true);
    mark_levels(&nodes);
    mark_reversed_edges(&nodes, false);
    level_graph->store_records();
    level_graph.reset();
}

std::unique_ptr<LevelGraph> IncLayout::make_level_graph(const std::vector<Node>& list,
                                                        bool records_wait) {
    return std::make_unique<LevelGraph>(*structure, list, *cur_info, local_info, !keep_hidden,
                                        records_wait);
}

// The nodes are numbered for all steps of a phase together; a step that is called by itself numbers
// them for itself.
template <typename F>
auto IncLayout::with_level_graph(const std::vector<Node>& list, F f) {
    return level_graph != nullptr ? f(*level_graph) : f(*make_level_graph(list));
}

bool IncLayout::passed_over(const Node& node) const {
    return !keep_hidden && IsFlagSet(node, NODE_HIDDEN);
}

void IncLayout::find_connectivity_components(std::vector<Node>* list,
                                             std::vector<std::vector<Node>>* components) {
    components->clear();
    components->reserve(std::max<std::size_t>(components->capacity(), 10));
    with_level_graph(*list, [&](LevelGraph& graph) {
        for (const std::vector<int>& found :
             _find_components(graph, graph.numbers_of(*list), [this] { count_steps(1); })) {
            _append_nodes(graph, found, components->emplace_back());
        }
    });
}

void IncLayout::collect_connectivity_component(Node start, std::vector<Node>* component) {
    with_level_graph({start}, [&](LevelGraph& graph) {
        std::vector<int> found;
        _collect_component(graph, graph.number_of(start), found, [this] { count_steps(1); });
        _append_nodes(graph, found, *component);
    });
}

void IncLayout::enumerate_connectivity_component(std::vector<Node>* component) {
    with_level_graph(*component, [&](LevelGraph& graph) {
        graph.get_enumeration().number_all(graph.numbers_of(*component),
                                           [this] { count_steps(1); });
    });
}

void IncLayout::_mark_edges(const Node& node) {
    with_level_graph({node},
                     [&](LevelGraph& graph) { graph.mark_edges_of(graph.number_of(node)); });
}

int IncLayout::_degree(graph_ptr2<IGraphSet<NodeEdgePair>> set) {
    std::vector<int> ids;
    for (int i = 0; i < set->GetCount(); ++i) {
        const Node node = set->GetItem(i).node;
        if (!passed_over(node) && (ids.empty() || ids.back() != node.GetID())) {
            ids.push_back(node.GetID());
        }
    }
    return static_cast<int>(ids.size());
}

namespace {

// A run of pairs with one neighbour is judged by its first pair; loops never count.
int _count_by_mark(LevelGraph& graph, int i, bool LocalEdgeInfo::*member, Order order, bool both) {
    const auto count = [&](Order side, bool wanted) {
        const auto links = side == ORDER_IN ? graph.parents_of(i) : graph.children_of(i);
        return LevelGraph::count_neighbours(links, [&](const LevelGraph::Link& link) {
            return link.node != i && !graph.passed_over(link.node) &&
                   graph.edge_record(link.edge).*member == wanted;
        });
    };
    return count(order, false) + (both ? count(order == ORDER_IN ? ORDER_OUT : ORDER_IN, true) : 0);
}

} // namespace

int IncLayout::_degree_ex(const Node& node, bool LocalEdgeInfo::*member, Order order, bool both) {
    return with_level_graph({node}, [&](LevelGraph& graph) {
        return _count_by_mark(graph, graph.number_of(node), member, order, both);
    });
}

void IncLayout::mark_reversed_edges(std::vector<Node>* list, bool by_order) {
    if (level_graph == nullptr && !by_order) {
        mark_edges_by_level(*list);
        return;
    }
    with_level_graph(*list, [&](LevelGraph& graph) {
        const auto place = [&](int i) {
            return by_order ? graph.order_of(i) : graph.level_record(i).level;
        };
        for (const int i : graph.numbers_of(*list)) {
            if (graph.passed_over(i)) {
                continue;
            }
            const int here = place(i);
            for (const LevelGraph::Link& link : graph.children_of(i)) {
                if (!graph.passed_over(link.node)) {
                    const int there = place(link.node);
                    LocalEdgeInfo& info = graph.edge_record(link.edge);
                    info.flat = here == there;
                    info.reversed = here > there;
                }
            }
        }
    });
}

// Most edges of a drawing run forwards, and most have no record yet, which says the same.
void IncLayout::mark_edges_by_level(const std::vector<Node>& list) {
    const bool whole_run = &list == &nodes;
    const std::unique_ptr<const RunNodes> alone =
        whole_run ? nullptr : std::make_unique<const RunNodes>(*structure, list, old_info);
    const RunNodes& run = whole_run ? take_run_nodes() : *alone;
    std::vector<int> levels;
    levels.reserve(list.size());
    for (int i = 0; i < run.get_count(); ++i) {
        const bool left_out = run.at(i).hidden && !keep_hidden;
        const int level = left_out    ? 0
                          : whole_run ? info_of(i).level
                                      : (*cur_info)[list[static_cast<std::size_t>(i)]].level;
        levels.push_back(level);
    }
    const auto level_at = [&](int place) {
        const int i = run.number_of(place);
        return i >= 0 ? levels[static_cast<std::size_t>(i)]
                      : (*cur_info)[structure->NodeAt(place)].level;
    };
    for (int i = 0; i < run.get_count(); ++i) {
        if (run.at(i).hidden && !keep_hidden) {
            continue;
        }
        const int here = levels[static_cast<std::size_t>(i)];
        for (const RunNodes::Link& link : run.children_of(i)) {
            if (keep_hidden || !run.at_place(link.node).hidden) {
                const int there = level_at(link.node);
                set_direction(link.edge, here == there, here > there);
            }
        }
    }
}

void IncLayout::set_direction(int edge_number, bool flat, bool reversed) {
    const Edge& edge = structure->EdgeAt(edge_number);
    local_store::edge_entry* const known =
        local_info.edge_info.empty() ? nullptr : local_info.edge_info.find(edge.GetID());
    if (known != nullptr || flat || reversed) {
        LocalEdgeInfo& info = known != nullptr ? known->second : local_info[edge];
        info.flat = flat;
        info.reversed = reversed;
    }
}

namespace {

/// Where the levels lead on from a node: its children, and its parents over reversed edges.
template <typename F>
void _for_each_successor(LevelGraph& graph, int i, F f) {
    const auto go = [&](std::span<const LevelGraph::Link> links, bool reversed) {
        for (const LevelGraph::Link& link : links) {
            if (link.node != i && !graph.passed_over(link.node) &&
                graph.edge_record(link.edge).reversed == reversed) {
                f(link.node);
            }
        }
    };
    go(graph.children_of(i), false);
    go(graph.parents_of(i), true);
}

/// All that can be reached from some nodes, in topological order: a depth-first walk with a stack
/// of its own, read backwards (Tarjan, "Edge-disjoint spanning trees and depth-first search",
/// 1976). On a cycle it stops where it has been.
class Reach {
public:
    explicit Reach(LevelGraph& of)
        : graph(of), reached(static_cast<std::size_t>(of.get_count()), 0) {}

    void walk_from(int source) {
        if (reached[static_cast<std::size_t>(source)] == 0) {
            enter(source);
        }
        while (!open.empty()) {
            Frame& frame = open.back();
            if (frame.next == successors.size()) {
                finished.push_back(frame.node);
                successors.resize(frame.first);
                open.pop_back();
                continue;
            }
            const int successor = successors[frame.next++];
            if (reached[static_cast<std::size_t>(successor)] == 0) {
                enter(successor);
            }
        }
    }

    std::vector<int> topological_order() const {
        return std::vector<int>(finished.rbegin(), finished.rend());
    }

private:
    /// A node on the path. Its successors begin at `first` on their stack, and reach to the top of
    /// it while the node is the last of the path.
    struct Frame {
        int node;
        std::size_t first;
        std::size_t next;
    };

    void enter(int i) {
        reached[static_cast<std::size_t>(i)] = 1;
        open.push_back(Frame{i, successors.size(), successors.size()});
        _for_each_successor(graph, i, [this](int successor) { successors.push_back(successor); });
    }

    LevelGraph& graph;
    std::vector<char> reached; ///< by number of the node
    std::vector<int> successors;
    std::vector<Frame> open;
    std::vector<int> finished;
};

// Longest paths from the sources, with the results of a walk that follows every path: a node takes
// the highest level that reaches it, and stops a path that arrives below what it has. Following
// paths one by one takes exponential time on dense graphs, so the nodes are taken in topological
// order, when all that reaches them is known.
void _raise_levels(LevelGraph& graph, const std::vector<int>& sources, int level) {
    Reach reach(graph);
    std::vector<int> arrival(static_cast<std::size_t>(graph.get_count()), INT_MIN);
    for (const int source : sources) {
        reach.walk_from(source);
        arrival[static_cast<std::size_t>(source)] = level;
    }
    for (const int i : reach.topological_order()) {
        const int arrived = arrival[static_cast<std::size_t>(i)];
        NodeInfo& info = graph.level_record(i);
        if (arrived == INT_MIN || arrived < info.level) {
            continue;
        }
        info.level = arrived;
        _for_each_successor(graph, i, [&](int successor) {
            int& further = arrival[static_cast<std::size_t>(successor)];
            further = std::max(further, arrived + 1);
        });
    }
}

} // namespace

void IncLayout::mark_levels(std::vector<Node>* list) {
    std::vector<Node> starts;
    with_level_graph(*list, [&](LevelGraph& graph) {
        std::vector<int> numbers;
        for (const int i : graph.numbers_of(*list)) {
            if (_count_by_mark(graph, i, &LocalEdgeInfo::reversed, ORDER_IN, true) == 0) {
                numbers.push_back(i);
                starts.push_back(graph.node_at(i));
            }
        }
        if (keep_hidden) {
            // No start node can be reached from another one, so all paths can be followed at once.
            for (const int i : numbers) {
                graph.level_record(i).level = 1;
            }
            _raise_levels(graph, numbers, 1);
            return;
        }
        // A hidden start node leads to visible ones, which start again when it is their turn.
        for (const int i : numbers) {
            graph.level_record(i).level = 1;
            _raise_levels(graph, {i}, 1);
        }
    });
    if (starts.size() > 1) {
        tighten_start_nodes(&starts);
    }
}

void IncLayout::set_node_level(const Node& node, int level) {
    with_level_graph(
        {node}, [&](LevelGraph& graph) { _raise_levels(graph, {graph.number_of(node)}, level); });
}

// A start node stands directly before its nearest successor. Only its own level moves.
void IncLayout::tighten_start_nodes(std::vector<Node>* starts) {
    with_level_graph(*starts, [&](LevelGraph& graph) {
        for (const int start : graph.numbers_of(*starts)) {
            int min = INT_MAX;
            _for_each_successor(graph, start, [&](int successor) {
                min = std::min(min, graph.level_record(successor).level);
            });
            if (min != INT_MAX && min > 2) {
                graph.level_record(start).level = min - 1;
            }
        }
    });
}

} // namespace nurvex7
