#include "apps/nurvex/view_picture.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr double MARGIN = 16;

/// Whole units, so that nothing is cut at the border.
QRectF whole_units(const QRectF& area) {
    const double left = std::floor(area.left());
    const double top = std::floor(area.top());
    return QRectF(left, top, std::max(1.0, std::ceil(area.right()) - left),
                  std::max(1.0, std::ceil(area.bottom()) - top));
}

} // namespace

ViewPicture::ViewPicture(graph_ptr2<Graph> given_graph, tamsel7::_color given_background,
                         std::shared_ptr<nurvex7::qt::Typesetter> type, const QRectF& area)
    : graph(given_graph), background(given_background), typesetter(std::move(type)),
      page(whole_units(area)) {}

QRectF ViewPicture::FindWholeArea(const Graph& graph) {
    const Node root = graph.GetRoot();
    const auto corner = root.GetPosition();
    const auto size = root.GetSize();
    return QRectF(corner.x - MARGIN, corner.y - MARGIN, size.width + 2 * MARGIN,
                  size.height + 2 * MARGIN);
}

void ViewPicture::Paint(nurvex7::qt::QtPainter& painter) const {
    constexpr double zoom = 1;
    BeginPage(painter, page, background);
    MarkDrawnIn(graph);
    std::vector<Edge> edges;
    ForEachNodeIn(
        graph->GetRoot(),
        [&](const Node& node) {
            EdgeSet out = node.GetEdgesOut();
            for (int i = 0; i < out.GetCount(); ++i) {
                edges.push_back(out.GetItem(i));
            }
            const auto handler = node.GetHandler();
            handler->SetZoomFactor(zoom);
            handler->Draw(node, &painter);
        },
        /*post_order=*/false, /*include_self=*/false);
    for (const Edge& edge : edges) {
        const auto handler = edge.GetHandler();
        handler->SetZoomFactor(zoom);
        handler->Draw(edge, &painter);
    }
    painter.EndPaint();
}

} // namespace nurvex
