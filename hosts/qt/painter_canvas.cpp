#include "hosts/qt/painter_canvas.h"

#include <QGlyphRun>
#include <QPaintDevice>
#include <QPaintEngine>

#include <algorithm>
#include <utility>

namespace nurvex7::qt {

namespace {

bool has_pixels(QPaintEngine::Type type) {
    return type == QPaintEngine::Raster || type == QPaintEngine::OpenGL ||
           type == QPaintEngine::OpenGL2 || type == QPaintEngine::Direct2D;
}

/// Qt draws the joins of lines of one pixel or less in a hurry, and leaves pale spots there. A line
/// of a thousandth more covers the same pixels.
QPen with_full_joins(QPen pen) {
    if (pen.style() != Qt::NoPen) {
        pen.setWidthF(pen.widthF() * 1.001);
    }
    return pen;
}

/// What can be seen of a line. Its parts stay one figure: where they cross, they are painted once.
/// One segment more at each end has them meet the rest at the corners that they have in the whole.
class SeenLine {
public:
    explicit SeenLine(const QRectF& area) : sight(area) {}

    /// False where no point between the two lies in sight. A place that is no number does.
    bool Sees(QPointF a, QPointF b) const {
        return !(std::max(a.x(), b.x()) < sight.left() || std::min(a.x(), b.x()) > sight.right() ||
                 std::max(a.y(), b.y()) < sight.top() || std::min(a.y(), b.y()) > sight.bottom());
    }

    /// Goes on from where the last segment has ended.
    void Add(QPointF from, QPointF to) {
        const bool seen = Sees(from, to);
        if (!seen && !shown) {
            end_part();
            part.append(from);
        } else if (part.isEmpty()) {
            part.append(from);
        }
        part.append(to);
        worthwhile = worthwhile || seen;
        shown = seen;
    }

    QPainterPath Take() {
        end_part();
        shown = false;
        return std::exchange(path, {});
    }

private:
    void end_part() {
        if (worthwhile) {
            path.addPolygon(part);
        }
        part.clear();
        worthwhile = false;
    }

    QRectF sight;
    QPainterPath path;
    QPolygonF part;
    bool worthwhile = false; ///< something of the part is seen
    bool shown = false;      ///< the last segment is
};

} // namespace

PainterCanvas::PainterCanvas(QPainter& given) : painter(given) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QPaintEngine::Type type = painter.paintEngine()->type();
    const QTransform device = painter.deviceTransform();
    if (has_pixels(type)) {
        text_form = TextForm::GLYPHS;
        if (device.type() <= QTransform::TxScale && device.m11() > 0 && device.m22() > 0) {
            grid_x = {device.m11(), device.dx()};
            grid_y = {device.m22(), device.dy()};
        }
    } else if (type == QPaintEngine::Pdf) {
        text_form = TextForm::GLYPHS;
    }
    // A widget counts its width in units, other surfaces theirs in pixels.
    const QPaintDevice* target = painter.device();
    const QSizeF size = QSizeF(target->width(), target->height()) * target->devicePixelRatio();
    surface = painter.combinedTransform().inverted().mapRect(QRectF(QPointF(), size));
    seen = surface;
}

QSizeF PainterCanvas::GetExtent() const {
    const QPaintDevice* device = painter.device();
    const QSizeF pixels(device->width(), device->height());
    return painter.deviceTransform().inverted().mapRect(QRectF(QPointF(), pixels)).size();
}

void PainterCanvas::SetClip(const QRectF& area) {
    painter.setClipRect(area);
    seen = surface.intersected(area);
}

void PainterCanvas::CancelClip() {
    painter.setClipping(false);
    seen = surface;
}

/// Segments out of sight are left out on pixels; where they were, lines end that nobody sees end.
/// Dashes are counted from the beginning of a line, and who reads from paper sees all of it.
///
/// The long stretches that remain are filled as rectangles, and only the corners between them are
/// stroked: the time to fill a path that is many pixels high grows with the square of its height,
/// that of a rectangle, turned or not, with its height.
void PainterCanvas::DrawPolyline(const QPolygonF& points, const QPen& pen) {
    if (grid_x.scale <= 0 || pen.style() != Qt::SolidLine) {
        QPainterPath whole;
        whole.addPolygon(points);
        stroke(whole, pen);
        return;
    }
    const double reach = reach_of(pen);
    SeenLine corner(seen.adjusted(-reach, -reach, reach, reach));
    for (qsizetype i = 1; i < points.size(); ++i) {
        QPointF from = points[i - 1];
        const QLineF middle = middle_of(QLineF(from, points[i]));
        const bool along_axis = middle.dx() == 0 || middle.dy() == 0;
        // Across the pixels, the pieces overlap a little, which only full colours hide.
        if (!middle.isNull() && (along_axis || pen.color().alpha() == 255)) {
            corner.Add(from, middle.p1());
            stroke(corner.Take(), pen);
            if (corner.Sees(middle.p1(), middle.p2())) {
                fill_line(middle, along_axis ? 0 : 0.5, pen);
            }
            from = middle.p2();
        }
        corner.Add(from, points[i]);
    }
    stroke(corner.Take(), pen);
}

/// How far from its points a line may colour a pixel: corners and caps reach as far as the pen
/// allows, and soft edges a pixel further.
double PainterCanvas::reach_of(const QPen& pen) const {
    const double pixel = 1 / std::min(grid_x.scale, grid_y.scale);
    return pen.widthF() * std::max(1.0, pen.miterLimit()) + 2 * pixel;
}

void PainterCanvas::stroke(const QPainterPath& path, const QPen& pen) {
    if (!path.isEmpty()) {
        painter.strokePath(path, with_full_joins(pen));
    }
}

/// A segment without its ends; null where it is not worth parting. Along an axis the cuts lie
/// between pixels, so that no seam shows.
QLineF PainterCanvas::middle_of(const QLineF& segment) const {
    constexpr double end = 4;
    constexpr double worthwhile = 32;
    const double length = segment.length();
    if (length < worthwhile) {
        return {};
    }
    QLineF middle(segment.pointAt(end / length), segment.pointAt(1 - end / length));
    if (segment.dy() == 0) {
        middle.setPoints({grid_x.AlignEdge(middle.x1()), middle.y1()},
                         {grid_x.AlignEdge(middle.x2()), middle.y1()});
    } else if (segment.dx() == 0) {
        middle.setPoints({middle.x1(), grid_y.AlignEdge(middle.y1())},
                         {middle.x1(), grid_y.AlignEdge(middle.y2())});
    }
    return middle;
}

void PainterCanvas::fill_line(const QLineF& line, double overlap, const QPen& pen) {
    const double width = pen.widthF();
    painter.save();
    painter.translate(line.p1());
    painter.rotate(-line.angle());
    painter.fillRect(QRectF(-overlap, -width / 2, line.length() + 2 * overlap, width), pen.brush());
    painter.restore();
}

void PainterCanvas::DrawPolygon(const QPolygonF& points, const QBrush& brush) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawPolygon(points);
}

void PainterCanvas::DrawRect(const QRectF& area, QSizeF radii, const QPen& pen,
                             const QBrush& brush) {
    painter.setPen(with_full_joins(pen));
    painter.setBrush(brush);
    if (radii.isEmpty()) {
        painter.drawRect(area);
    } else {
        painter.drawRoundedRect(area, radii.width(), radii.height());
    }
}

void PainterCanvas::InvertFrame(const QRectF& area) {
    const double x = grid_x.AlignWidth(1);
    const double y = grid_y.AlignWidth(1);
    const QRectF hole = area.adjusted(x, y, -x, -y);
    QPainterPath frame;
    frame.addRect(area);
    if (hole.isValid()) {
        frame.addRect(hole);
    }
    painter.save();
    if (grid_x.scale > 0) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        painter.fillPath(frame, Qt::white);
    } else {
        painter.fillPath(frame, Qt::black);
    }
    painter.restore();
}

void PainterCanvas::DrawText(const ShapedText& text, QPointF baseline, double size,
                             const QColor& color) {
    if (text_form == TextForm::GLYPHS) {
        draw_glyphs(text, baseline, size, color);
    } else {
        draw_outlines(text, baseline, size, color);
    }
}

void PainterCanvas::draw_glyphs(const ShapedText& text, QPointF baseline, double size,
                                const QColor& color) {
    // The glyphs are rendered at the size that they have on the device, so that no scaling of
    // finished glyphs blurs them.
    const double zoom = grid_y.scale > 0 ? grid_y.scale : 1;
    painter.save();
    painter.translate(baseline);
    painter.scale(1 / zoom, 1 / zoom);
    painter.setPen(color);
    for (const GlyphRow& row : text.rows) {
        QList<QPointF> places = row.places;
        for (QPointF& place : places) {
            place *= size * zoom;
        }
        QGlyphRun run;
        run.setRawFont(sized_face(row.face, size * zoom));
        run.setGlyphIndexes(row.glyphs);
        run.setPositions(places);
        painter.drawGlyphRun(QPointF(), run);
    }
    painter.restore();
}

void PainterCanvas::draw_outlines(const ShapedText& text, QPointF baseline, double size,
                                  const QColor& color) {
    const double shrink = size / REFERENCE_SIZE;
    QPainterPath outline;
    outline.setFillRule(Qt::WindingFill);
    for (const GlyphRow& row : text.rows) {
        for (qsizetype i = 0; i < row.glyphs.size(); ++i) {
            const QPointF at = baseline + row.places[i] * size;
            const QTransform place(shrink, 0, 0, shrink, at.x(), at.y());
            outline.addPath(place.map(row.face.pathForGlyph(row.glyphs[i])));
        }
    }
    painter.fillPath(outline, color);
}

QRawFont PainterCanvas::sized_face(const QRawFont& reference, double size) {
    for (const auto& [known, sized] : sized_faces) {
        if (known == reference && sized.pixelSize() == size) {
            return sized;
        }
    }
    QRawFont sized = reference;
    sized.setPixelSize(size);
    sized_faces.emplace_back(reference, sized);
    return sized;
}

} // namespace nurvex7::qt
