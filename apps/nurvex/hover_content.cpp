#include "apps/nurvex/hover_content.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/presentation/iedge_handler.h"
#include "nurvex7/presentation/inode_handler.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>
#include <vector>

namespace nurvex {

using namespace nurvex7;

namespace {

/// How far lines and arrow heads reach beyond where they are. Space: pixel.
constexpr int REACH = 8;

template <typename T>
bool contains(const std::vector<T>& items, const T& item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

} // namespace

CContent* HoverContent::Make(brevolt7::CVisualElement* parent_element,
                             graph_ptr2<Graph> shown_graph, bool needs_coord_system) {
    return new HoverContent(parent_element, shown_graph, needs_coord_system);
}

void HoverContent::ShowLaidOut(graph_ptr2<Graph> laid_out) {
    graph = laid_out;
    forget_what_is_gone();
    left_margin = top_margin = right_margin = bottom_margin = 0;
    RenewView(true);
}

void HoverContent::SetScale(double pixels) {
    const QScopedValueRollback mark(scaling, true);
    CContent::SetScale(pixels);
}

void HoverContent::RenewView(bool invalidate) {
    if (invalidate && !scaling && on_drawing_changed) {
        on_drawing_changed();
    }
    CContent::RenewView(invalidate);
}

/// A layout that was queued without a word is told like any other change.
void HoverContent::DrawContent(tamsel7::IPainter* painter) {
    if (held) {
        return;
    }
    if (RecalculateLayout(painter)) {
        RenewView(true);
    }
    renew_redrawn();
    CContent::DrawContent(painter);
}

/// Painted over itself, everything would cost more than what is seen of it, and become bolder: what
/// the handlers have asked for is painted anew in its place. A press shows on leaves only, though
/// it is answered for the ground as well.
void HoverContent::renew_redrawn() {
    forget_what_is_gone();
    for (const Node& node : std::exchange(redraw_nodes, {})) {
        if (!IsRoot(node) && node.GetOwned().GetCount() == 0) {
            renew(node);
        }
    }
    for (const Edge& edge : std::exchange(redraw_edges, {})) {
        renew(edge);
    }
}

// A hidden cluster that is hit stands for the clusters around it, which the hit test leaves out
// then.
Node HoverContent::find_target(int x, int y) const {
    const tamsel7::point<double> at = ConvertP2L({x, y});
    const auto is_target = [&at](const Node& node) {
        const tamsel7::rectangle<double> r = MakeDRect(node.GetPosition(), node.GetSize());
        return IsFlagSet(node, NODE_DRAWN) && r.left <= at.x && at.x <= r.right && r.top <= at.y &&
               at.y <= r.bottom;
    };
    NodeSet hits = HitNodeTest(x, y, x, y);
    for (int i = 0; i < hits.GetCount(); ++i) {
        if (is_target(hits.GetItem(i))) {
            return hits.GetItem(i);
        }
    }
    for (int i = 0; i < hits.GetCount(); ++i) {
        Node around = hits.GetItem(i);
        while (!IsRoot(around) && !is_target(around)) {
            around = around.GetOwner();
        }
        if (!IsRoot(around)) {
            return around;
        }
    }
    return GetGraph()->GetRoot();
}

std::optional<Edge> HoverContent::find_edge_target(int x, int y) const {
    EdgeSet hits = HitEdgeTest(x, y, x, y);
    for (int i = 0; i < hits.GetCount(); ++i) {
        if (IsFlagSet(hits.GetItem(i), EDGE_DRAWN)) {
            return hits.GetItem(i);
        }
    }
    return std::nullopt;
}

void HoverContent::HoverAt(int x, int y) {
    if (!pressed_nodes.empty()) {
        return; // who presses is not looking around
    }
    std::vector<Node> nodes;
    std::vector<Edge> edges;
    if (const Node target = find_target(x, y); !IsRoot(target)) {
        nodes.push_back(target);
    }
    if (nodes.empty() || nodes.front().GetOwned().GetCount() > 0) {
        if (const std::optional<Edge> target = find_edge_target(x, y)) {
            edges.push_back(*target);
        }
    }
    const std::vector<Node> left_nodes = std::exchange(hovered_nodes, nodes);
    const std::vector<Edge> left_edges = std::exchange(hovered_edges, edges);
    // Painted over itself, a line with soft edges becomes bolder with every visit: the places are
    // painted anew instead of what a handler asks for.
    const auto tell = [this](const auto& all, const auto& others, auto event) {
        for (const auto& each : all) {
            if (shows(each) && !contains(others, each)) {
                const auto handler = each.GetHandler();
                if ((handler.get()->*event)(each) != HANDLED_NOTHING && shows(each)) {
                    renew(each);
                }
            }
        }
    };
    tell(left_nodes, nodes, &INodeHandler::HandleMouseLeave);
    tell(left_edges, edges, &IEdgeHandler::HandleMouseLeave);
    tell(nodes, left_nodes, &INodeHandler::HandleMouseHover);
    tell(edges, left_edges, &IEdgeHandler::HandleMouseHover);
}

void HoverContent::renew(const Node& node) {
    renew(MakeDRect(node.GetPosition(), node.GetSize()));
}

void HoverContent::renew(const Edge& edge) {
    NodeSet route = edge.GetBreakNodes();
    for (int i = 1; i < route.GetCount(); ++i) {
        const auto a = route.GetItem(i - 1).GetPosition();
        const auto b = route.GetItem(i).GetPosition();
        renew({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)});
    }
}

void HoverContent::renew(tamsel7::rectangle<double> area) {
    const tamsel7::point<int> a = ConvertL2P({area.left, area.top});
    const tamsel7::point<int> b = ConvertL2P({area.right, area.bottom});
    const tamsel7::rectangle<int> all = GetBounds();
    // What lies far outside has the largest numbers that there are: they have no room for a reach.
    const auto across = [&](int x) { return std::clamp(x, all.left, all.right); };
    const auto down = [&](int y) { return std::clamp(y, all.top, all.bottom); };
    const tamsel7::rectangle<int> part{across(across(a.x) - REACH), down(down(a.y) - REACH),
                                       across(across(b.x) + REACH), down(down(b.y) + REACH)};
    if (part.left < part.right && part.top < part.bottom) {
        InvalidateRect(part);
    }
}

} // namespace nurvex
