#pragma once

#include "hosts/qt/canvas.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>

#include <utility>
#include <vector>

namespace nurvex7::qt {

/// A Canvas on a QPainter.
///
/// On pixels, lines and baselines lie on whole pixels of the device, whatever its pixel ratio. On
/// paper (PDF, printers) everything stays where it is and texts stay texts. Other devices take
/// texts as outlines. What a line costs on pixels goes by how much of it is seen.
///
/// Space   the QPainter's coordinates at construction
/// Duty    the QPainter is active and outlives the canvas; its transform is not changed meanwhile
class PainterCanvas final : public Canvas {
public:
    explicit PainterCanvas(QPainter& given);

    QSizeF GetExtent() const override;
    PixelGrid GetGridX() const override { return grid_x; }
    PixelGrid GetGridY() const override { return grid_y; }
    void SetClip(const QRectF& area) override;
    void CancelClip() override;
    void DrawPolyline(const QPolygonF& points, const QPen& pen) override;
    void DrawPolygon(const QPolygonF& points, const QBrush& brush) override;
    void DrawRect(const QRectF& area, QSizeF radii, const QPen& pen, const QBrush& brush) override;
    void InvertFrame(const QRectF& area) override;
    void DrawText(const ShapedText& text, QPointF baseline, double size,
                  const QColor& color) override;

private:
    enum class TextForm { GLYPHS, OUTLINES };

    double reach_of(const QPen& pen) const;
    void stroke(const QPainterPath& path, const QPen& pen);
    QLineF middle_of(const QLineF& segment) const;
    void fill_line(const QLineF& line, double overlap, const QPen& pen);
    void draw_glyphs(const ShapedText& text, QPointF baseline, double size, const QColor& color);
    void draw_outlines(const ShapedText& text, QPointF baseline, double size, const QColor& color);
    QRawFont sized_face(const QRawFont& reference, double size);

    QPainter& painter;
    PixelGrid grid_x;
    PixelGrid grid_y;
    QRectF surface; ///< what can be seen at all; more where that is not known
    QRectF seen;    ///< of it, what the clip leaves
    TextForm text_form = TextForm::OUTLINES;
    std::vector<std::pair<QRawFont, QRawFont>> sized_faces; ///< at REFERENCE_SIZE, at a size in use
};

} // namespace nurvex7::qt
