#pragma once

#include "hosts/qt/canvas.h"
#include "hosts/qt/typesetter.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <QBrush>
#include <QColor>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QRectF>

#include <memory>
#include <string>

namespace nurvex7::qt {

/// The library's painter on Qt: on widgets, images, PDF pages and SVG pictures, with the same
/// measures on all of them.
///
/// It starts in device coordinates with a black pen of width 1, a hollow brush and the sans serif
/// of the platform at 8 points; BeginPaint goes back to these tools.
///
/// Space   device: the QPainter's coordinates at construction, or the units of an SVG picture. Font
///         sizes are points at 96 device units an inch.
/// Order   a polyline appears as one figure, when something else is drawn or set, or at Flush: so
///         its corners join, and an arrow head at its end covers the line's end
/// Duty    a QGuiApplication exists; one thread
class QtPainter final : public tamsel7::IPainter {
public:
    /// Paints with a QPainter. Duty: it is active and outlives this painter; meanwhile nobody
    /// changes its transform.
    explicit QtPainter(QPainter& target, std::shared_ptr<Typesetter> type = nullptr);
    /// Paints on a device with a QPainter of its own. Duty: the device outlives this painter.
    explicit QtPainter(QPaintDevice& target, std::shared_ptr<Typesetter> type = nullptr);
    /// Paints on a canvas. Duty: it outlives this painter.
    explicit QtPainter(Canvas& target, std::shared_ptr<Typesetter> type = nullptr);
    ~QtPainter() override;

    /// Draws what is still held back.
    void Flush();

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;
    /// A mapping without extent is ignored.
    void SetCoordSystem(MapMode mode, CoordInfo* info) override;
    void GetCoordSystem(MapMode& mode, CoordInfo* info) override;
    /// With `add`, the clip is narrowed rather than replaced.
    void SetClipRect(double left, double top, double right, double bottom, bool add) override;
    void CancelClip() override;
    tamsel7::rectangle<int> GetDrawArea() override;
    void SetPen(const tamsel7::pen& tool) override;
    void SetBrush(const tamsel7::brush& tool) override;
    /// A font of size 0 or below has no extent and draws nothing: captions of a drawing that is
    /// zoomed far out.
    void SetFont(const tamsel7::font& tool) override;
    void SetTextColor(const tamsel7::_color& color) override;
    void MoveTo(double x, double y) override;
    void LineTo(double x, double y) override;
    void BeginPlot(PlotType type) override;
    void Vertex(double x, double y) override;
    void EndPlot() override;
    void SetArrowSize(tamsel7::size<int> head) override;
    void Rectangle(double left, double top, double right, double bottom) override;
    /// Space   the radii are logical
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override;
    void FillRect(double left, double top, double right, double bottom) override;
    /// Smooth, whatever the number of steps.
    void GradientFill(double left, double top, double right, double bottom,
                      const tamsel7::_color& from, const tamsel7::_color& to, unsigned long steps,
                      GradientDirection direction) override;
    /// On surfaces without pixels, a plain frame that stays.
    void DrawFocusFrame(double left, double top, double right, double bottom) override;
    /// A text that is too wide ends in an ellipsis, one that is too high is clipped.
    void DrawString(const tamsel7::rectangle<double>& area, const std::string& text, int format,
                    int reserved) override;
    tamsel7::size<double> GetTextSize(const std::string& text, const tamsel7::font* tool,
                                      int reserved, bool flag_1, bool flag_2) override;

private:
    /// A font as it is set with: its face, and its height of an em. Space: device.
    struct Type {
        Typeface* face = nullptr;
        double size = 0;
    };

    void reset_tools();
    Type find_type(const tamsel7::font& tool);
    QPointF to_device(double x, double y) const;
    QRectF to_device(double left, double top, double right, double bottom) const;
    QRectF line_rect(const QRectF& area) const;
    QRectF fill_rect(const QRectF& area) const;
    QPolygonF aligned_line() const;
    void draw_arrow();
    QPointF baseline(const QRectF& area, const ShapedText& text, int format) const;
    void apply_clip();

    std::unique_ptr<QPainter> own_painter;
    std::unique_ptr<Canvas> own_canvas;
    Canvas& canvas;
    std::shared_ptr<Typesetter> typesetter;

    MapMode map_mode = MapMode::MAP_DEVICE;
    CoordInfo coords;
    double scale_x = 1;
    double scale_y = 1;

    QPen pen;
    QBrush brush;
    QColor text_color;
    Type type;
    QRectF clip; ///< device; empty where nothing is clipped
    bool clipping = false;

    QPolygonF line; ///< the polyline held back; device
    QPolygonF plot; ///< the vertices of the figure begun; device
    tamsel7::size<int> arrow_size{7, 5};
};

} // namespace nurvex7::qt
