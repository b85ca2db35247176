#include "nurvex7/presentation/rect_port_node_drawer.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/node.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"
#include "nurvex7/platform/tamsel7/palette.h"

#include <utility>

namespace nurvex7 {
namespace {

using tamsel7::IPainter;
using tamsel7::rectangle;

constexpr unsigned long GRADIENT_STEPS = 100;
constexpr int ANY_NEIGHBOURS = PORT_ALL_VISIBLE | PORT_ALL_HIDDEN | PORT_PARTLY_VISIBLE;

// All in heights of the node.
constexpr double PORT_AND_GAP = 1.1; ///< what a port takes of the node's width
constexpr double GAP = 0.1;          ///< between the body and a port
constexpr double ROUNDING = 0.4;     ///< radius of a port's corners

bool is_cluster(const Node& node) {
    return node.GetOwned().GetCount() > 0;
}

rectangle<double> rect_of(const Node& node) {
    return MakeDRect(node.GetPosition(), node.GetSize());
}

/// The rectangle of a node without the room of its ports.
rectangle<double> body_of(const Node& node) {
    tamsel7::point<double> corner = node.GetPosition();
    tamsel7::size<double> extent = node.GetSize();
    if (!is_cluster(node)) {
        corner.x += extent.height * PORT_AND_GAP;
        extent.width -= extent.height * (2 * PORT_AND_GAP);
    }
    return MakeDRect(corner, extent);
}

int sign_of(double value) {
    return (value > 0) - (value < 0);
}

/// True where a value lies from a to b, both included. Between equal ends there is nothing.
bool is_between(double value, double a, double b) {
    return sign_of(value - a) != sign_of(value - b);
}

tamsel7::pen pen_of(const tamsel7::_color& color, int width) {
    return {color, width, 1, 0, 0};
}

tamsel7::brush brush_of(const tamsel7::_color& color, int style) {
    return {color, style, 0, 0, 0};
}

} // namespace

CRectPortNodeDrawer::~CRectPortNodeDrawer() = default;

tamsel7::size<double> CRectPortNodeDrawer::GetSize(Node node) {
    return info.GetSizeByCaption(node);
}

SizeAndOrigin CRectPortNodeDrawer::GetSize(Node node, tamsel7::size<double> inner) {
    if (IsRoot(node)) {
        return {inner, {0.0, 0.0}};
    }
    return size_with_band(node, GetSize(node), inner);
}

void CRectPortNodeDrawer::Draw(Node node, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(node, NODE_DRAWN)) {
        return;
    }
    IPainter* const kept = std::exchange(info.painter, painter);
    draw_on(node, *painter);
    info.painter = kept;
}

void CRectPortNodeDrawer::draw_on(const Node& node, IPainter& painter) {
    info.SetScaledFont();
    painter.SetPen(pen_of(info.border_color, info.border_width));
    painter.SetTextColor(info.caption_color);
    painter.SetBrush(
        brush_of(tamsel7::GetSysPalette().GetColor(tamsel7::SysPalette::VIEW_BACKGROUND), 0));
    const std::string caption = info.GetTruncatedCaption(node);

    rectangle<double> rect = body_of(node);
    draw_body(node, rect, painter);
    if (is_cluster(node)) {
        painter.DrawString(rect, caption, IPainter::FORMAT_TOP_LEFT, -1);
    } else {
        painter.DrawString(rect, caption, IPainter::FORMAT_CENTRED, -1);
        draw_ports(rect, painter);
    }
    if (IsFlagSet(node, NODE_HIGHLIGHTED)) {
        draw_highlight(rect, painter);
    }
}

void CRectPortNodeDrawer::draw_body(const Node& node, const rectangle<double>& body,
                                    IPainter& painter) const {
    tamsel7::_color first = info.fill_color_1;
    tamsel7::_color second = info.fill_color_2;
    if (IsFlagSet(node, NODE_SELECTED)) {
        first = info.selected_fill_color_1;
        second = info.selected_fill_color_2;
    } else if (IsFlagSet(node, NODE_NEW)) {
        first = info.new_fill_color_1;
        second = info.new_fill_color_2;
    }
    if (IsFlagSet(node, NODE_HOVERED)) {
        first = tamsel7::lighten(first);
        second = tamsel7::lighten(second);
    }
    painter.GradientFill(body.left, body.top, body.right, body.bottom, first, second,
                         GRADIENT_STEPS, IPainter::GradientDirection::GRADIENT_FORWARD);
    painter.SetPen(pen_of(info.border_color, info.border_width));
    painter.Rectangle(body.left, body.top, body.right, body.bottom);
}

/// Draws the ports beside the body, and widens the rectangle over those that are there.
void CRectPortNodeDrawer::draw_ports(rectangle<double>& around, IPainter& painter) const {
    const double height = around.bottom - around.top;
    const double left = around.left - height * PORT_AND_GAP;
    if (draw_port({left, around.top, left + height, around.bottom}, info.left_port_state, "<",
                  painter)) {
        around.left = left - info.zoom;
    }
    const double right = around.right + height * GAP;
    if (draw_port({right, around.top, right + height, around.bottom}, info.right_port_state, ">",
                  painter)) {
        around.right = right + height + info.zoom;
    }
}

/// Gives whether there is a port to draw.
bool CRectPortNodeDrawer::draw_port(const rectangle<double>& place, int state,
                                    const char* partly_symbol, IPainter& painter) const {
    if ((state & ANY_NEIGHBOURS) == 0) {
        return false;
    }
    tamsel7::_color color = info.port_open_color;
    const char* symbol = "-";
    if ((state & PORT_ALL_HIDDEN) != 0) {
        color = info.port_closed_color;
        symbol = "+";
    }
    if ((state & PORT_PARTLY_VISIBLE) != 0) {
        color = info.port_partial_color;
        symbol = partly_symbol;
    }
    if ((state & PORT_PRESSED) != 0) {
        color = tamsel7::lighten(color);
    }
    painter.SetBrush(brush_of(color, 1));
    const double radius = (place.right - place.left) * ROUNDING;
    painter.RoundRect(place.left, place.top, place.right, place.bottom, radius, radius);
    painter.DrawString(place, symbol, IPainter::FORMAT_CENTRED, -1);
    return true;
}

void CRectPortNodeDrawer::draw_highlight(rectangle<double> around, IPainter& painter) const {
    around.top -= info.zoom;
    around.bottom += info.zoom;
    painter.SetBrush(brush_of({0, 0, 0}, 0));
    painter.SetPen(pen_of(info.highlight_color, 1));
    painter.Rectangle(around.left, around.top, around.right, around.bottom);
}

void CRectPortNodeDrawer::SetIPainter(IPainter* painter) {
    info.painter = painter;
}

IPainter* CRectPortNodeDrawer::GetIPainter() const {
    return info.painter;
}

void CRectPortNodeDrawer::SetZoomFactor(double zoom) {
    if (zoom > 0.0) {
        info.zoom = zoom;
    }
}

bool CRectPortNodeDrawer::IsLeftPortClicked(Node node, double x, double y) const {
    const rectangle<double> rect = rect_of(node);
    const double height = rect.bottom - rect.top;
    return is_between(x, rect.left, rect.left + height) && is_between(y, rect.bottom, rect.top);
}

bool CRectPortNodeDrawer::IsRightPortClicked(Node node, double x, double y) const {
    const rectangle<double> rect = rect_of(node);
    const double height = rect.bottom - rect.top;
    return is_between(x, rect.right - height, rect.right) && is_between(y, rect.bottom, rect.top);
}

void CRectPortNodeDrawer::SetLeftPortState(int state) {
    info.left_port_state = state;
}

void CRectPortNodeDrawer::SetRightPortState(int state) {
    info.right_port_state = state;
}

} // namespace nurvex7
