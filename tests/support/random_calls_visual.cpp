#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"
#include "tests/support/plain_hits.h"
#include "tests/support/plain_queries.h"
#include "tests/support/random_calls.h"

// Calls around flags, positions, handlers and the routes of edges.

namespace nurvex7::testing_support {

std::vector<RandomCalls::Call> RandomCalls::visual_calls() {
    return {
        {"set_flags", 15, &RandomCalls::set_flags},
        {"hide_or_show", 30, &RandomCalls::hide_or_show},
        {"fold", 30, &RandomCalls::fold},
        {"mark_drawn", 20, &RandomCalls::mark_drawn},
        {"set_place", 30, &RandomCalls::set_place},
        {"shift", 15, &RandomCalls::shift},
        {"shift_inside", 8, &RandomCalls::shift_inside},
        {"move_node", 20, &RandomCalls::move_node},
        {"set_handler", 10, &RandomCalls::set_handler},
        {"set_default_handlers", 3, &RandomCalls::set_default_handlers},
        {"bend_edge", 12, &RandomCalls::bend_edge},
        {"straighten_edge", 12, &RandomCalls::straighten_edge},
        {"read_route", 20, &RandomCalls::read_route},
        {"read_records", 8, &RandomCalls::read_records},
        {"hit", 60, &RandomCalls::hit},
    };
}

void RandomCalls::set_flags() {
    const Node n = any_kind_of_node();
    SetFlag(n, below(64), chance(50));
    Select(n);
    Unselect(n);
    MarkOld(n);
    IsFlagSet(n, below(64));
    if (std::optional<Edge> e = edge()) {
        SetFlag(*e, below(32), chance(50));
        _mark_edge_drawn(*e);
        _mark_edge_nondrawn(*e);
        e->SetCondition(e->GetCondition() ^ below(32));
    }
}

void RandomCalls::hide_or_show() {
    const Node n = any_kind_of_node();
    if (chance(50)) {
        Hide(n);
    } else {
        Show(n);
    }
}

void RandomCalls::fold() {
    const Node n = any_kind_of_node();
    const FoldDirection direction = chance(50) ? FOLD_CHILDREN : FOLD_PARENTS;
    if (chance(50)) {
        Fold(n, direction);
    } else {
        Unfold(n, direction);
    }
}

void RandomCalls::mark_drawn() {
    if (!marks_like_a_walk(graph())) {
        fault = "the drawn marks are others than a walk over all nodes writes";
    }
    if (chance(20)) {
        _mark_node_drawn(node(), chance(50));
    }
}

void RandomCalls::set_place() {
    Node n = any_kind_of_node();
    n.SetSize({number(), number()});
    n.SetPosition(number(), number());
    MakeDRect(n.GetPosition(), n.GetSize());
}

void RandomCalls::shift() {
    const Node n = any_kind_of_node();
    _shift(n, point());
    ShiftWithEdges(n, point());
    UnshiftWithEdges(n);
    _shift_position(n, point());
    _break_nodes_shift(GetParentsEx(n), point(), node_or_root());
}

void RandomCalls::shift_inside() {
    const Node n = any_kind_of_node();
    UnshiftPosition(n);
    ShiftPosition(n, point());
    ShiftPosition(n, number(), number());
}

void RandomCalls::move_node() {
    MoveNode(any_kind_of_node(), number(), number());
}

void RandomCalls::set_handler() {
    Node n = any_kind_of_node();
    n.SetHandler(chance(60) ? graph_ptr2<INodeHandler>(node_handler.get(), /*owns=*/false)
                            : graph_ptr2<INodeHandler>());
    n.GetHandler();
}

void RandomCalls::set_default_handlers() {
    graph_ptr2<Graph>& g = graph();
    g->SetDefaultNodeHandler(chance(60)
                                 ? graph_ptr2<INodeHandler>(node_handler.get(), /*owns=*/false)
                                 : graph_ptr2<INodeHandler>());
    g->SetDefaultEdgeHandler(chance(60)
                                 ? graph_ptr2<IEdgeHandler>(edge_handler.get(), /*owns=*/false)
                                 : graph_ptr2<IEdgeHandler>());
    if (chance(50)) {
        g->GetDefaultNodeHandler();
    }
}

void RandomCalls::bend_edge() {
    if (std::optional<Edge> e = edge()) {
        e->AddBreakNodesIn(any_kind_of_node(), below(6) - 1);
        e->AddBreakNodesIn(e->To().IsDummy() ? root() : e->To().GetOwner(), below(4));
        e->GetHandler()->GetWidth(*e);
    }
}

void RandomCalls::straighten_edge() {
    if (std::optional<Edge> e = edge()) {
        e->RemoveBreakNodesIn(any_kind_of_node());
        if (!e->From().IsDummy()) {
            e->RemoveBreakNodesIn(e->From().GetOwner());
        }
        if (chance(30)) {
            e->RemoveBreakNodes();
        }
    }
}

void RandomCalls::read_route() {
    if (std::optional<Edge> e = edge()) {
        for (const Node& bend : items(e->GetBreakNodes())) {
            bend.GetPosition();
            bend.GetSize();
        }
        e->GetBreakNodesIn(any_kind_of_node());
    }
}

void RandomCalls::read_records() {
    // Of a graph that lives: a store that outlived its graph would take up the default layout
    // again.
    const Node n = root();
    IGraphVis& store = *n.get_vis();
    store.get_node_vis(n.get_impl())->get_node_impl();
    store.get_default_layout();
    store.get_default_node_painter();
    if (chance(20)) {
        store.remove_node_vis(node().get_impl());
    }
    if (std::optional<Edge> e = edge()) {
        store.get_edge_vis(e->get_impl())->get_edge_impl();
        store.remove_edge_vis(e->get_impl());
    }
}

void RandomCalls::hit() {
    const hit_area area{number(), number(), number(), number()};
    if (const std::string found = find_hit_fault(graph(), area); !found.empty()) {
        fault = found;
    }
}

} // namespace nurvex7::testing_support
