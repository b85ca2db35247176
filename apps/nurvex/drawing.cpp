#include "apps/nurvex/drawing.h"

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace nurvex {

using namespace nurvex7;
using nurvex7::qt::QtPainter;
using tamsel7::IPainter;

namespace {

constexpr double MARGIN = 16;

/// The smallest rectangle around everything that it is told of.
class Bounds {
public:
    void Add(double left, double top, double right, double bottom) {
        if (empty) {
            area = {left, top, right, bottom};
            empty = false;
            return;
        }
        area = {std::min(area.left, left), std::min(area.top, top), std::max(area.right, right),
                std::max(area.bottom, bottom)};
    }
    tamsel7::rectangle<double> Get() const { return area; }

private:
    tamsel7::rectangle<double> area;
    bool empty = true;
};

} // namespace

Drawing::Drawing(graph_ptr2<Graph> given_graph, const Spacing& spacing, Style::Theme theme)
    : graph(given_graph), style(theme), typesetter(std::make_shared<nurvex7::qt::Typesetter>()) {
    lay_out(spacing);
    MarkDrawnIn(graph);
    collect();
    find_page();
}

void Drawing::lay_out(const Spacing& spacing) {
    // Sizes do not depend on the surface, so any will do to measure with.
    QImage surface(1, 1, QImage::Format_RGB32);
    QtPainter painter(surface, typesetter);
    painter.BeginPaint(IPainter::StdSettings::STANDARD);
    painter.SetFont(style.GetFont());
    style.Dress(graph, &painter);
    // A layout of its own: the shared one has spacing of its own. It goes once it is done, for it
    // keeps nodes, and these keep the store that would keep it.
    graph->SetDefaultLayout(graph_ptr2<IncLayout>(
        new IncLayout(spacing.level_gap, spacing.node_gap, spacing.edge_gap, spacing.edge_margin),
        /*owns=*/true));
    graph->RecalculateLayout(&painter);
    graph->SetDefaultLayout(GetDefaultLayout());
    painter.EndPaint();
    style.Dress(graph, nullptr);
}

void Drawing::collect() {
    ForEachNodeIn(
        graph->GetRoot(),
        [this](const Node& node) {
            if (!IsFlagSet(node, NODE_DRAWN)) {
                return;
            }
            nodes.push_back(node);
            EdgeSet out = node.GetEdgesOut();
            for (int i = 0; i < out.GetCount(); ++i) {
                const Edge edge = out.GetItem(i);
                if (IsFlagSet(edge, EDGE_DRAWN)) {
                    edges.push_back(edge);
                }
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

void Drawing::find_page() {
    Bounds bounds;
    for (const Node& node : nodes) {
        const auto rect = MakeDRect(node.GetPosition(), node.GetSize());
        bounds.Add(rect.left, rect.top, rect.right, rect.bottom);
    }
    for (const Edge& edge : edges) {
        NodeSet route = edge.GetBreakNodes();
        for (int i = 0; i < route.GetCount(); ++i) {
            const auto at = route.GetItem(i).GetPosition();
            bounds.Add(at.x, at.y, at.x, at.y);
        }
    }
    const auto area = bounds.Get();
    const double left = std::floor(area.left - MARGIN);
    const double top = std::floor(area.top - MARGIN);
    page = QRectF(left, top, std::ceil(area.right + MARGIN - left),
                  std::ceil(area.bottom + MARGIN - top));
}

void Drawing::Paint(QtPainter& painter) const {
    constexpr double zoom = 1;
    painter.BeginPaint(IPainter::StdSettings::STANDARD);
    IPainter::CoordInfo info{0,
                             page.x(),
                             page.y(),
                             page.width(),
                             page.height(),
                             0,
                             0,
                             static_cast<int>(page.width()),
                             static_cast<int>(page.height())};
    painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, &info);
    painter.SetBrush({style.GetBackground(), 1});
    painter.FillRect(page.left(), page.top(), page.right(), page.bottom());
    // The outline of a node is filled with the brush: it must not cover the node's own fill.
    painter.SetBrush({});
    painter.SetFont(style.GetFont());
    for (const Node& node : nodes) {
        const auto handler = node.GetHandler();
        handler->SetZoomFactor(zoom);
        handler->Draw(node, &painter);
    }
    for (const Edge& edge : edges) {
        const auto handler = edge.GetHandler();
        handler->SetZoomFactor(zoom);
        handler->Draw(edge, &painter);
    }
    painter.EndPaint();
}

} // namespace nurvex
