#include "nurvex7/presentation/dummy_edge_handler.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/node.h"
#include "nurvex7/platform/tamsel7/painter.h"

namespace nurvex7 {
namespace {

void _draw_line(NodeSet& route, tamsel7::IPainter& painter) {
    const tamsel7::point<double> start = route.GetItem(0).GetPosition();
    painter.MoveTo(start.x, start.y);
    for (int i = 1; i < route.GetCount(); ++i) {
        const tamsel7::point<double> next = route.GetItem(i).GetPosition();
        painter.LineTo(next.x, next.y);
    }
}

/// The head lies on the last segment and keeps its size at every zoom.
void _draw_head(NodeSet& route, tamsel7::IPainter& painter) {
    const int last = route.GetCount() - 1;
    const tamsel7::point<double> from = route.GetItem(last - 1).GetPosition();
    const tamsel7::point<double> to = route.GetItem(last).GetPosition();
    painter.SetArrowSize({7, 5});
    painter.BeginPlot(tamsel7::IPainter::PlotType::PLOT_ARROW);
    painter.Vertex(from.x, from.y);
    painter.Vertex(to.x, to.y);
    painter.EndPlot();
}

} // namespace

DummyEdgeHandler::~DummyEdgeHandler() = default;

void DummyEdgeHandler::Draw(Edge edge, tamsel7::IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(edge, EDGE_DRAWN)) {
        return;
    }
    NodeSet route = edge.GetBreakNodes();
    if (route.GetCount() < 2) {
        return;
    }
    tamsel7::_color color = IsFlagSet(edge, EDGE_HIGHLIGHTED) ? highlight_color : edge_color;
    if (IsFlagSet(edge, EDGE_HOVERED)) {
        color = tamsel7::lighten(color);
    }
    painter->SetPen({color, line_width, 1, 0, 0});
    _draw_line(route, *painter);
    _draw_head(route, *painter);
}

void DummyEdgeHandler::SetZoomFactor(double zoom) {
    if (zoom > 0.0) {
        zoom_factor = zoom;
    }
}

double DummyEdgeHandler::GetWidth(Edge) const {
    return 1.0;
}

int DummyEdgeHandler::HandleMouseHover(Edge edge) {
    SetFlag(edge, EDGE_HOVERED, true);
    return HANDLED_REDRAW_NODE;
}

int DummyEdgeHandler::HandleMouseLeave(Edge edge) {
    SetFlag(edge, EDGE_HOVERED, false);
    return HANDLED_REDRAW_NODE;
}

int DummyEdgeHandler::HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) {
    event->text = edge.GetCaption();
    // The tooltip goes as soon as the pointer leaves the thin line.
    const double r = zoom_factor > 1.0 ? zoom_factor + 0.01 : 1.01;
    event->hot_rect = {{event->pos.x - r, event->pos.y - r}, {event->pos.x + r, event->pos.y + r}};
    sig_tooltip(edge, event);
    return HANDLED_DONE;
}

graph_ptr2<IEdgeHandler> GetDefaultEdgeHandler() {
    static const graph_ptr2<IEdgeHandler> handler(new DummyEdgeHandler, /*owns=*/true);
    return handler;
}

} // namespace nurvex7
