#include "hosts/qt/painter_canvas.h"

#include <QGlyphRun>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>

namespace nurvex7::qt {

namespace {

bool has_pixels(QPaintEngine::Type type) {
    return type == QPaintEngine::Raster || type == QPaintEngine::OpenGL ||
           type == QPaintEngine::OpenGL2 || type == QPaintEngine::Direct2D;
}

/// An outline as an area. Stroked thin, it would have pale corners on pixels.
QPainterPath frame(const QRectF& area, double width) {
    const double half = width / 2;
    QPainterPath path;
    path.addRect(area.adjusted(-half, -half, half, half));
    if (area.width() > width && area.height() > width) {
        path.addRect(area.adjusted(half, half, -half, -half));
    }
    return path;
}

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
}

QSizeF PainterCanvas::GetExtent() const {
    const QPaintDevice* device = painter.device();
    const QSizeF pixels(device->width(), device->height());
    return painter.deviceTransform().inverted().mapRect(QRectF(QPointF(), pixels)).size();
}

void PainterCanvas::SetClip(const QRectF& area) {
    painter.setClipRect(area);
}

void PainterCanvas::CancelClip() {
    painter.setClipping(false);
}

void PainterCanvas::DrawPolyline(const QPolygonF& points, const QPen& pen) {
    QPainterPath path;
    path.addPolygon(points);
    painter.strokePath(path, pen);
}

void PainterCanvas::DrawPolygon(const QPolygonF& points, const QBrush& brush) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawPolygon(points);
}

void PainterCanvas::DrawRect(const QRectF& area, QSizeF radii, const QPen& pen,
                             const QBrush& brush) {
    if (radii.isEmpty() && grid_x.scale > 0 && pen.style() != Qt::NoPen) {
        painter.fillRect(area, brush);
        painter.fillPath(frame(area, pen.widthF()), pen.brush());
        return;
    }
    painter.setPen(pen);
    painter.setBrush(brush);
    if (radii.isEmpty()) {
        painter.drawRect(area);
    } else {
        painter.drawRoundedRect(area, radii.width(), radii.height());
    }
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
