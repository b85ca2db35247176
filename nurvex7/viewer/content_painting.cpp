// A repaint: the layout first, then what has changed, then what is invalid.
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/brevolt7/invalid_region.h"
#include "nurvex7/platform/tamsel7/painter.h"
#include "nurvex7/platform/tamsel7/palette.h"
#include "nurvex7/viewer/content.h"
#include "nurvex7/viewer/drawing_walks.h"

#include <cstddef>

namespace nurvex7 {

namespace {

/// Up to so many changed nodes are painted over what stands; with more, everything is painted anew.
constexpr std::size_t MOST_REDRAWN_NODES = 2;

/// How far pens, arrow heads and outlines reach beyond the exact rectangles and lines that the hit
/// tests know, in pixels. What reaches into a piece is painted along, or it would be cut off there.
constexpr double OVERHANG = 4;

std::vector<Node> nodes_of(NodeSet set) {
    std::vector<Node> nodes;
    nodes.reserve(static_cast<std::size_t>(set.GetCount()));
    for (int i = 0; i < set.GetCount(); ++i) {
        nodes.push_back(set.GetItem(i));
    }
    return nodes;
}

} // namespace

bool CContent::RecalculateLayout() {
    return RecalculateLayout(nullptr);
}

bool CContent::RecalculateLayout(tamsel7::IPainter* painter) {
    if (painter == nullptr && GetControl() != nullptr) {
        painter = GetControl()->GetPainter();
    }
    const bool first = layout_phase == 0;
    if (first) {
        layout_phase = 1;
    }
    const graph_ptr2<Graph> current = GetGraph();
    const bool changed = current->RecalculateLayout(painter);
    if (!first && (layout_phase == 1 || changed)) {
        layout_phase = 2;
    }
    return changed;
}

void CContent::DrawContent(tamsel7::IPainter* painter) {
    if (RecalculateLayout(painter)) {
        emit_view();
        Invalidate();
    }
    MarkDrawnIn(graph);
    if (need_coord_system) {
        SetCoordSystem(painter);
    }
    OnBeforeDraw(this, painter);
    paint_redrawn(painter);
    const brevolt7::CInvalidRegion region(GetDrawRect(painter), GetDrawValidRect(painter));
    for (int i = 0; i < region.count; ++i) {
        paint_piece(painter, region[i]);
    }
}

/// The few nodes that changed, with what they own and the edges across them. Neither clipped nor
/// cleared: they are painted over themselves.
void CContent::paint_redrawn(tamsel7::IPainter* painter) {
    const bool few = redraw_nodes.size() <= MOST_REDRAWN_NODES;
    forget_what_is_gone();
    if (few) {
        sort_by_ownership(redraw_nodes);
        CollectEdgesInNodes crossing(graph);
        for (const Node& node : redraw_nodes) {
            ForEachNodeIn(node, DrawNode(painter, scale), false, true);
        }
        for (const Node& node : redraw_nodes) {
            crossing(node);
        }
        const DrawEdge draw(painter, scale);
        for (const Edge& edge : redraw_edges) {
            draw(edge);
        }
        for (const Edge& edge : crossing.edges) {
            draw(edge);
        }
    } else {
        Invalidate();
    }
    redraw_nodes.clear();
    redraw_edges.clear();
}

void CContent::paint_piece(tamsel7::IPainter* painter, const tamsel7::rectangle<double>& piece) {
    painter->SetClipRect(piece.left, piece.top, piece.right, piece.bottom, false);
    const int background = tamsel7::SysPalette::VIEW_BACKGROUND;
    painter->SetBrush({tamsel7::GetSysPalette().GetColor(background), 1});
    painter->FillRect(piece.left, piece.top, piece.right, piece.bottom);
    const double more = OVERHANG / scale;
    const tamsel7::rectangle<double> r{piece.left - more, piece.top - more, piece.right + more,
                                       piece.bottom + more};
    std::vector<Node> nodes = nodes_of(graph->HitNodeTest(r.left, r.top, r.right, r.bottom));
    sort_by_ownership(nodes);
    const DrawNode draw_node(painter, scale);
    for (const Node& node : nodes) {
        draw_node(node);
    }
    EdgeSet edges = graph->HitEdgeTest(r.left, r.top, r.right, r.bottom);
    const DrawEdge draw_edge(painter, scale);
    for (int i = 0; i < edges.GetCount(); ++i) {
        draw_edge(edges.GetItem(i));
    }
    painter->CancelClip();
}

} // namespace nurvex7
