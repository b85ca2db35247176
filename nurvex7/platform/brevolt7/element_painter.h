#pragma once

#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/tamsel7/painter.h"

namespace brevolt7 {

/// The painter of a window, as one element sees it: its pixels are the element's, and it paints
/// only where it may.
///
/// Without a clip it paints inside `own`; with one, inside `outer`. Both in pixels of the element.
class ElementPainter final : public tamsel7::IPainter {
public:
    /// `corner` is the element's place in the window.
    ElementPainter(tamsel7::IPainter& window_painter, const tamsel7::point<int>& corner,
                   const pixel_rect& bounds, const pixel_rect& own, const pixel_rect& outer);
    /// Leaves the window's painter in the pixels of the window, without a clip.
    ~ElementPainter() override;

    /// True once a clip went beyond `own`.
    bool HasPaintedOutside() const { return outside; }

    void BeginPaint(StdSettings settings) override;
    void EndPaint() override;
    void SetCoordSystem(MapMode mode, CoordInfo* info) override;
    void GetCoordSystem(MapMode& mode, CoordInfo* info) override;
    void SetClipRect(double left, double top, double right, double bottom, bool add) override;
    void CancelClip() override;
    /// The whole element.
    tamsel7::rectangle<int> GetDrawArea() override { return bounds; }

    void SetPen(const tamsel7::pen& tool) override { inner.SetPen(tool); }
    void SetBrush(const tamsel7::brush& tool) override { inner.SetBrush(tool); }
    void SetFont(const tamsel7::font& tool) override { inner.SetFont(tool); }
    void SetTextColor(const tamsel7::_color& color) override { inner.SetTextColor(color); }
    void MoveTo(double x, double y) override { inner.MoveTo(x, y); }
    void LineTo(double x, double y) override { inner.LineTo(x, y); }
    void BeginPlot(PlotType type) override { inner.BeginPlot(type); }
    void Vertex(double x, double y) override { inner.Vertex(x, y); }
    void EndPlot() override { inner.EndPlot(); }
    void SetArrowSize(tamsel7::size<int> head) override { inner.SetArrowSize(head); }
    void Rectangle(double left, double top, double right, double bottom) override;
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override;
    void FillRect(double left, double top, double right, double bottom) override;
    void GradientFill(double left, double top, double right, double bottom,
                      const tamsel7::_color& from, const tamsel7::_color& to, unsigned long steps,
                      GradientDirection direction) override;
    void DrawFocusFrame(double left, double top, double right, double bottom) override;
    void DrawString(const tamsel7::rectangle<double>& area, const std::string& text, int format,
                    int reserved) override;
    tamsel7::size<double> GetTextSize(const std::string& text, const tamsel7::font* tool,
                                      int reserved, bool flag_1, bool flag_2) override;

private:
    void install();
    void clip_to(const tamsel7::rectangle<double>& pixels);

    tamsel7::IPainter& inner;
    tamsel7::point<int> corner;
    pixel_rect bounds;
    tamsel7::rectangle<double> own;
    tamsel7::rectangle<double> outer;
    tamsel7::rectangle<double> clip; ///< pixels of the element
    MapMode mode = MapMode::MAP_DEVICE;
    CoordInfo info;
    bool outside = false;
};

} // namespace brevolt7
