#pragma once

#include "hosts/qt/pixel_grid.h"
#include "hosts/qt/typesetter.h"

#include <QBrush>
#include <QColor>
#include <QPen>
#include <QPolygonF>
#include <QRectF>

namespace nurvex7::qt {

/// The few figures that QtPainter draws, on one kind of surface.
///
/// Space   device
class Canvas {
public:
    Canvas() = default;
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    virtual ~Canvas() = default;

    virtual QSizeF GetExtent() const = 0;
    virtual PixelGrid GetGridX() const = 0;
    virtual PixelGrid GetGridY() const = 0;

    virtual void SetClip(const QRectF& area) = 0;
    virtual void CancelClip() = 0;

    virtual void DrawPolyline(const QPolygonF& points, const QPen& pen) = 0;
    virtual void DrawPolygon(const QPolygonF& points, const QBrush& brush) = 0;
    /// A rectangle with corners of the given radii; either tool may be empty.
    virtual void DrawRect(const QRectF& area, QSizeF radii, const QPen& pen,
                          const QBrush& brush) = 0;
    /// Inverts a frame of one pixel inside a rectangle, so that the same call again takes it away;
    /// where there are no pixels, draws it.
    virtual void InvertFrame(const QRectF& area) = 0;
    /// A text from the left end of its baseline. `size` is the font's height of an em.
    virtual void DrawText(const ShapedText& text, QPointF baseline, double size,
                          const QColor& color) = 0;
};

} // namespace nurvex7::qt
