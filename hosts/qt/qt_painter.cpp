#include "hosts/qt/qt_painter.h"

#include "hosts/qt/painter_canvas.h"
#include "nurvex7/platform/tamsel7/palette.h"

#include <QLineF>
#include <QLinearGradient>

#include <algorithm>
#include <cmath>

namespace nurvex7::qt {

namespace {

constexpr double UNITS_PER_POINT = 96.0 / 72.0;
constexpr int STANDARD_FONT_SIZE = 8;
constexpr double TEXT_INSET = 4;       ///< device; left of a text at the top left
constexpr double TEXT_BASELINE = 0.85; ///< ems; below the top of a text at the top left

/// A colour for Qt. Where nobody has chosen one, the given one is taken; what `lighten` gives
/// carries the mark of a colour not chosen too, but it has its source's alpha.
QColor to_qt(const tamsel7::_color& c, const QColor& standard) {
    if (c.is_default != 0 && c.alpha == 0) {
        return standard;
    }
    return QColor(c.red, c.green, c.blue, c.alpha);
}

QPen to_qt(const tamsel7::pen& tool) {
    if (tool.style == 0) {
        return Qt::NoPen;
    }
    return QPen(to_qt(tool.color, Qt::black), std::max(1, tool.width), Qt::SolidLine, Qt::FlatCap,
                Qt::MiterJoin);
}

/// True where a line along an axis just goes on beyond its second point.
bool goes_on(QPointF a, QPointF b, QPointF c) {
    return (a.y() == b.y() && b.y() == c.y() && (b.x() - a.x()) * (c.x() - b.x()) > 0) ||
           (a.x() == b.x() && b.x() == c.x() && (b.y() - a.y()) * (c.y() - b.y()) > 0);
}

/// A line whose last segment ends earlier. What is shorter than that loses the segment.
QPolygonF shortened(QPolygonF line, double by) {
    QLineF last(line[line.size() - 2], line.last());
    if (last.length() <= by) {
        line.removeLast();
    } else {
        last.setLength(last.length() - by);
        line.last() = last.p2();
    }
    return line;
}

QPolygonF arrow_head(QPointF from, QPointF tip, tamsel7::size<int> head) {
    QLineF back(tip, from);
    back.setLength(head.width);
    QLineF side = back.normalVector();
    side.setLength(head.height * 0.5);
    const QPointF half(side.dx(), side.dy());
    return {{back.p2() + half, tip, back.p2() - half}};
}

} // namespace

QtPainter::QtPainter(QPainter& target, std::shared_ptr<Typesetter> type)
    : own_canvas(std::make_unique<PainterCanvas>(target)), canvas(*own_canvas),
      typesetter(type ? std::move(type) : std::make_shared<Typesetter>()) {
    reset_tools();
}

QtPainter::QtPainter(QPaintDevice& target, std::shared_ptr<Typesetter> type)
    : own_painter(std::make_unique<QPainter>(&target)),
      own_canvas(std::make_unique<PainterCanvas>(*own_painter)), canvas(*own_canvas),
      typesetter(type ? std::move(type) : std::make_shared<Typesetter>()) {
    reset_tools();
}

QtPainter::QtPainter(Canvas& target, std::shared_ptr<Typesetter> type)
    : canvas(target), typesetter(type ? std::move(type) : std::make_shared<Typesetter>()) {
    reset_tools();
}

QtPainter::~QtPainter() {
    Flush();
}

void QtPainter::reset_tools() {
    SetPen({tamsel7::_color(0, 0, 0)});
    SetBrush({});
    SetTextColor({0, 0, 0});
    SetFont({"", 4, STANDARD_FONT_SIZE, 0, 0, 1.0});
    arrow_size = {7, 5};
}

void QtPainter::BeginPaint(StdSettings /*settings*/) {
    reset_tools();
    paint_started = true;
}

void QtPainter::EndPaint() {
    Flush();
    paint_started = false;
}

// Coordinates

void QtPainter::SetCoordSystem(MapMode mode, CoordInfo* info) {
    Flush();
    if (mode != MapMode::MAP_LOGICAL) {
        map_mode = mode;
        scale_x = scale_y = 1;
        return;
    }
    if (info == nullptr || !(info->logical_width > 0) || !(info->logical_height > 0) ||
        info->device_width <= 0 || info->device_height <= 0) {
        return;
    }
    map_mode = mode;
    coords = *info;
    scale_x = info->device_width / info->logical_width;
    scale_y = info->device_height / info->logical_height;
}

void QtPainter::GetCoordSystem(MapMode& mode, CoordInfo* info) {
    mode = map_mode;
    if (info == nullptr) {
        return;
    }
    const int leading = info->leading;
    if (map_mode == MapMode::MAP_LOGICAL) {
        *info = coords;
    } else {
        const tamsel7::rectangle<int> area = GetDrawArea();
        *info = {0,
                 0.0,
                 0.0,
                 static_cast<double>(area.right),
                 static_cast<double>(area.bottom),
                 0,
                 0,
                 area.right,
                 area.bottom};
        info->leading = leading;
    }
}

QPointF QtPainter::to_device(double x, double y) const {
    if (map_mode != MapMode::MAP_LOGICAL) {
        return {x, y};
    }
    return {(x - coords.logical_x) * scale_x + coords.device_x,
            (y - coords.logical_y) * scale_y + coords.device_y};
}

QRectF QtPainter::to_device(double left, double top, double right, double bottom) const {
    return QRectF(to_device(left, top), to_device(right, bottom)).normalized();
}

tamsel7::rectangle<int> QtPainter::GetDrawArea() {
    const QSizeF extent = canvas.GetExtent();
    return {0, 0, static_cast<int>(std::ceil(extent.width())),
            static_cast<int>(std::ceil(extent.height()))};
}

/// The centre line of an outline of the pen's width.
QRectF QtPainter::line_rect(const QRectF& area) const {
    const PixelGrid x = canvas.GetGridX();
    const PixelGrid y = canvas.GetGridY();
    const double width = pen.widthF();
    return QRectF(QPointF(x.AlignLine(area.left(), width), y.AlignLine(area.top(), width)),
                  QPointF(x.AlignLine(area.right(), width), y.AlignLine(area.bottom(), width)));
}

/// The whole pixels that a filled area takes.
QRectF QtPainter::fill_rect(const QRectF& area) const {
    const PixelGrid x = canvas.GetGridX();
    const PixelGrid y = canvas.GetGridY();
    return QRectF(QPointF(x.AlignEdge(area.left()), y.AlignEdge(area.top())),
                  QPointF(x.AlignEdge(area.right()), y.AlignEdge(area.bottom())));
}

// Clip

void QtPainter::SetClipRect(double left, double top, double right, double bottom, bool add) {
    Flush();
    const QRectF area = fill_rect(to_device(left, top, right, bottom));
    clip = add && clipping ? clip.intersected(area) : area;
    clipping = true;
    apply_clip();
}

void QtPainter::CancelClip() {
    Flush();
    clip = {};
    clipping = false;
    apply_clip();
}

void QtPainter::apply_clip() {
    if (clipping) {
        canvas.SetClip(clip);
    } else {
        canvas.CancelClip();
    }
}

// Tools

void QtPainter::SetPen(const tamsel7::pen& tool) {
    Flush();
    pen = to_qt(tool);
    pen.setWidthF(canvas.GetGridY().AlignWidth(pen.widthF()));
}

void QtPainter::SetBrush(const tamsel7::brush& tool) {
    if (tool.style == 0) {
        brush = Qt::NoBrush;
    } else {
        const tamsel7::_color background =
            tamsel7::GetSysPalette().GetColor(tamsel7::SysPalette::VIEW_BACKGROUND);
        brush = to_qt(tool.color, to_qt(background, Qt::white));
    }
}

void QtPainter::SetTextColor(const tamsel7::_color& color) {
    text_color = to_qt(color, Qt::black);
}

void QtPainter::SetFont(const tamsel7::font& tool) {
    type = find_type(tool);
}

QtPainter::Type QtPainter::find_type(const tamsel7::font& tool) {
    const double points = std::max(0.0, tool.size * tool.factor);
    return {&typesetter->GetTypeface(tool.name), points * UNITS_PER_POINT};
}

void QtPainter::SetArrowSize(tamsel7::size<int> head) {
    arrow_size = head;
}

// Lines

void QtPainter::MoveTo(double x, double y) {
    Flush();
    line = {to_device(x, y)};
}

void QtPainter::LineTo(double x, double y) {
    const QPointF to = to_device(x, y);
    if (line.size() > 1 && goes_on(line[line.size() - 2], line.last(), to)) {
        line.last() = to;
    } else if (line.isEmpty() || line.last() != to) {
        line.append(to);
    }
}

void QtPainter::Flush() {
    if (line.size() > 1) {
        canvas.DrawPolyline(aligned_line(), pen);
    }
    line.clear();
}

/// The polyline with its segments along the axes on whole pixels; the others follow.
QPolygonF QtPainter::aligned_line() const {
    constexpr double straight = 1e-3;
    const PixelGrid x = canvas.GetGridX();
    const PixelGrid y = canvas.GetGridY();
    QPolygonF aligned = line;
    for (qsizetype i = 1; i < line.size(); ++i) {
        if (std::abs(line[i].y() - line[i - 1].y()) < straight) {
            aligned[i - 1].setY(y.AlignLine(line[i - 1].y(), pen.widthF()));
            aligned[i].setY(aligned[i - 1].y());
        } else if (std::abs(line[i].x() - line[i - 1].x()) < straight) {
            aligned[i - 1].setX(x.AlignLine(line[i - 1].x(), pen.widthF()));
            aligned[i].setX(aligned[i - 1].x());
        }
    }
    return aligned;
}

void QtPainter::BeginPlot(PlotType /*type*/) {
    plot.clear();
}

void QtPainter::Vertex(double x, double y) {
    plot.append(to_device(x, y));
}

void QtPainter::EndPlot() {
    if (plot.size() == 2 && arrow_size.width > 0 && arrow_size.height > 0) {
        draw_arrow();
    }
    plot.clear();
}

/// The head at the end of the polyline held back is drawn in one go with it: the line ends inside
/// the head, for at the tip the head is narrower than any line.
void QtPainter::draw_arrow() {
    const bool ends_line = line.size() > 1 && line.last() == plot[1];
    if (!ends_line) {
        Flush();
        line = plot;
    }
    const QPolygonF aligned = aligned_line();
    line.clear();
    const QPointF from = aligned[aligned.size() - 2];
    const QPointF tip = aligned.last();
    if (ends_line) {
        const QPolygonF shaft = shortened(aligned, arrow_size.width - 1.0);
        if (shaft.size() > 1) {
            canvas.DrawPolyline(shaft, pen);
        }
    }
    if (from != tip) {
        canvas.DrawPolygon(arrow_head(from, tip, arrow_size), pen.brush());
    }
}

// Areas

void QtPainter::Rectangle(double left, double top, double right, double bottom) {
    Flush();
    canvas.DrawRect(line_rect(to_device(left, top, right, bottom)), {}, pen, brush);
}

void QtPainter::RoundRect(double left, double top, double right, double bottom, double rx,
                          double ry) {
    Flush();
    const QSizeF radii(rx * scale_x, ry * scale_y);
    canvas.DrawRect(line_rect(to_device(left, top, right, bottom)), radii, pen, brush);
}

void QtPainter::FillRect(double left, double top, double right, double bottom) {
    Flush();
    canvas.DrawRect(fill_rect(to_device(left, top, right, bottom)), {}, Qt::NoPen, brush);
}

void QtPainter::GradientFill(double left, double top, double right, double bottom,
                             const tamsel7::_color& from, const tamsel7::_color& to,
                             unsigned long /*steps*/, GradientDirection /*direction*/) {
    Flush();
    const QColor first = to_qt(from, Qt::white);
    const QColor last = to_qt(to, Qt::white);
    const QRectF area = fill_rect(to_device(left, top, right, bottom));
    QBrush fill(first);
    if (first != last) {
        QLinearGradient gradient(area.topLeft(), area.bottomLeft());
        gradient.setColorAt(0, first);
        gradient.setColorAt(1, last);
        fill = gradient;
    }
    canvas.DrawRect(area, {}, Qt::NoPen, fill);
}

void QtPainter::DrawFocusFrame(double left, double top, double right, double bottom) {
    Flush();
    canvas.InvertFrame(fill_rect(to_device(left, top, right, bottom)));
}

// Texts

void QtPainter::DrawString(const tamsel7::rectangle<double>& area, const std::string& text,
                           int format, int /*reserved*/) {
    Flush();
    const QRectF box = to_device(area.left, area.top, area.right, area.bottom);
    if (text.empty() || !(type.size > 0)) {
        return;
    }
    const double inset = format == FORMAT_CENTRED ? 0 : TEXT_INSET;
    const auto shaped = type.face->ShapeToFit(text, (box.width() - 2 * inset) / type.size);
    const QPointF start = baseline(box, *shaped, format);
    const InkRange ink = FindInk(*shaped);
    const bool too_high = start.y() + ink.top * type.size < box.top() ||
                          start.y() + ink.bottom * type.size > box.bottom();
    if (too_high) {
        canvas.SetClip(clipping ? clip.intersected(box) : box);
    }
    canvas.DrawText(*shaped, start, type.size, text_color);
    if (too_high) {
        apply_clip();
    }
}

/// Where a text begins. Its line lies on whole pixels, which keeps letters sharp at the foot.
QPointF QtPainter::baseline(const QRectF& area, const ShapedText& text, int format) const {
    const PixelGrid y = canvas.GetGridY();
    if (format == FORMAT_CENTRED) {
        const double below_centre = (type.face->GetAscent() - type.face->GetDescent()) / 2;
        return {area.center().x() - text.advance * type.size / 2,
                y.AlignEdge(area.center().y() + below_centre * type.size)};
    }
    return {area.left() + TEXT_INSET, y.AlignEdge(area.top() + TEXT_BASELINE * type.size)};
}

tamsel7::size<double> QtPainter::GetTextSize(const std::string& text, const tamsel7::font* tool,
                                             int /*reserved*/, bool /*flag_1*/, bool /*flag_2*/) {
    const Type used = tool == nullptr ? type : find_type(*tool);
    const double height = (used.face->GetAscent() + used.face->GetDescent()) * used.size;
    if (!(used.size > 0)) {
        return {};
    }
    return {used.face->Measure(text) * used.size / scale_x, height / scale_y};
}

} // namespace nurvex7::qt
