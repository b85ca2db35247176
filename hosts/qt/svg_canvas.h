#pragma once

#include "hosts/qt/canvas.h"

#include <QByteArray>
#include <QIODevice>

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace nurvex7::qt {

/// A Canvas that writes an SVG picture.
///
/// Texts are outlines, so that the picture looks the same where its fonts are missing. Each glyph
/// is defined once and used by reference, which keeps the file as small as one with plain texts;
/// each text carries its wording as a label for search and for screen readers. QSvgGenerator was
/// tried for this and dropped: that of Qt 6.4 loses clips, rounds coordinates to six digits,
/// defines a gradient anew for every node and takes ten times the room.
///
/// Space   device: units of the picture, CSS pixels at scale 1. Lines lie on whole pixels, so that
///         the picture is sharp at its own size.
class SvgCanvas final : public Canvas {
public:
    /// `scale` magnifies the picture as a whole.
    SvgCanvas(QSizeF given_extent, double given_scale);

    QSizeF GetExtent() const override { return extent; }
    PixelGrid GetGridX() const override { return {1, 0}; }
    PixelGrid GetGridY() const override { return {1, 0}; }
    void SetClip(const QRectF& area) override;
    void CancelClip() override;
    void DrawPolyline(const QPolygonF& points, const QPen& pen) override;
    void DrawPolygon(const QPolygonF& points, const QBrush& brush) override;
    void DrawRect(const QRectF& area, QSizeF radii, const QPen& pen, const QBrush& brush) override;
    void InvertFrame(const QRectF& area) override;
    void DrawText(const ShapedText& text, QPointF baseline, double size,
                  const QColor& color) override;

    /// Writes the picture that has been drawn.
    void Write(QIODevice& out, const QString& title);

private:
    /// An outlined glyph by the name that uses refer to; empty where the glyph has no ink.
    QByteArray glyph_name(const QRawFont& face, quint32 glyph);
    int face_number(const QRawFont& face);
    /// The value of a fill attribute; gradients are defined on the way, each of them once.
    QByteArray paint(const QBrush& brush);
    void flush_fill();
    void part_body();
    void write_rect(const QRectF& area, QSizeF radii, const QByteArray& tools);

    QSizeF extent;
    double scale;
    QByteArray defs;
    std::vector<QByteArray> parts; ///< of the body that are full
    QByteArray body;               ///< what follows them
    std::vector<QRawFont> faces;
    std::map<std::pair<int, quint32>, QByteArray> glyphs;
    std::map<QByteArray, QByteArray> gradients; ///< name by definition
    std::map<QByteArray, QByteArray> clips;     ///< name by definition
    bool clipped = false;
    /// A filled rectangle that the outline to come may still join, so that a node is one element.
    std::optional<std::pair<QRectF, QByteArray>> open_fill;
};

} // namespace nurvex7::qt
