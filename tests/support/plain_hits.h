#pragma once

#include "nurvex7/model/folding.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace nurvex7::testing_support {

using hit_area = tamsel7::rectangle<double>;

inline DefaultGraphVis& store_of(const graph_ptr2<Graph>& graph) {
    return static_cast<DefaultGraphVis&>(*graph->GetRoot().get_vis());
}

/// Ids of the nodes that are hit, found by a look at every record.
inline std::vector<int> plain_node_hits(DefaultGraphVis& store, const hit_area& r) {
    NodeCollector collector(r.left, r.top, r.right, r.bottom);
    store.get_node_records().for_each([&](int id, const NodeVisInfo& info) {
        if (id >= 0) {
            collector(info);
        }
    });
    const auto holds = [](const graph_ptr<INodeImpl>& outer, const graph_ptr<INodeImpl>& inner) {
        return inner != 0 && inner->get_owner() == outer;
    };
    std::vector<int> ids;
    for (const graph_ptr<INodeImpl>& hit : *collector.touching) {
        ids.push_back(hit->get_id());
    }
    for (const graph_ptr<INodeImpl>& outer : *collector.enclosing) {
        if (std::none_of(collector.enclosing->begin(), collector.enclosing->end(),
                         [&](const auto& inner) { return holds(outer, inner); })) {
            ids.push_back(outer->get_id());
        }
    }
    return ids;
}

/// Ids of the edges that are hit, found by a walk along every route.
inline std::vector<int> plain_edge_hits(DefaultGraphVis& store, const hit_area& r) {
    EdgeCollector collector(r.left, r.top, r.right, r.bottom, &store);
    store.get_edge_records().for_each([&](int, const EdgeVisInfo& info) { collector(info); });
    std::vector<int> ids;
    for (const graph_ptr<IEdgeImpl>& hit : *collector.hits) {
        ids.push_back(hit->get_id());
    }
    return ids;
}

template <typename Set>
std::vector<int> ids_of(Set set) {
    std::vector<int> ids;
    for (int i = 0; i < set.GetCount(); ++i) {
        ids.push_back(set.GetItem(i).GetID());
    }
    return ids;
}

/// What is wrong with the hit tests of a graph in an area; empty where nothing is.
inline std::string find_hit_fault(const graph_ptr2<Graph>& graph, const hit_area& r) {
    DefaultGraphVis& store = store_of(graph);
    const auto node_hits = ids_of(graph->HitNodeTest(r.left, r.top, r.right, r.bottom));
    if (node_hits != plain_node_hits(store, r)) {
        return "other nodes are hit than by a look at each";
    }
    const auto edge_hits = ids_of(graph->HitEdgeTest(r.left, r.top, r.right, r.bottom));
    const std::size_t records = store.get_node_record_count();
    std::vector<bool> routes;
    const auto note_route = [&](int, const EdgeVisInfo& info) {
        routes.push_back(static_cast<const DefaultEdgeVis&>(*info.vis).has_route());
    };
    store.get_edge_records().for_each(note_route);
    const std::vector<bool> routes_before = std::exchange(routes, {});
    if (edge_hits != plain_edge_hits(store, r)) {
        return "other edges are hit than by a walk along each";
    }
    store.get_edge_records().for_each(note_route);
    return routes == routes_before && store.get_node_record_count() == records
               ? ""
               : "a walk along each edge leaves more behind than the hit test";
}

/// The marks of a graph, written by a walk over all of it.
inline void plain_mark_drawn(const graph_ptr2<Graph>& graph) {
    const Node root = graph->GetRoot();
    ForEachNodeIn(root, ProcessOutgoingEdges<void (*)(Edge)>(_mark_edge_drawn), false, false);
    _mark_node_drawn(root, true);
}

/// The conditions of all nodes of a graph and of their edges.
inline std::vector<int> conditions_in(const graph_ptr2<Graph>& graph) {
    std::vector<int> conditions;
    const auto note_edges = [&](EdgeSet edges) {
        for (int i = 0; i < edges.GetCount(); ++i) {
            conditions.push_back(edges.GetItem(i).GetCondition());
        }
    };
    ForEachNodeIn(
        graph->GetRoot(),
        [&](const Node& node) {
            conditions.push_back(node.GetCondition());
            note_edges(node.GetEdgesIn());
            note_edges(node.GetEdgesOut());
        },
        false, false);
    return conditions;
}

/// Whether MarkDrawnIn leaves what a walk over the whole graph would. The walk writes over edges
/// and counts as a change of its own, so that the marks are brought up to date behind it.
inline bool marks_like_a_walk(const graph_ptr2<Graph>& graph) {
    MarkDrawnIn(graph);
    const std::vector<int> found = conditions_in(graph);
    plain_mark_drawn(graph);
    const bool alike = conditions_in(graph) == found;
    MarkDrawnIn(graph);
    return alike;
}

} // namespace nurvex7::testing_support
