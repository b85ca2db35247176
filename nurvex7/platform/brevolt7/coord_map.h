#pragma once

#include "nurvex7/platform/tamsel7/painter.h"

namespace brevolt7 {

/// The coordinates that a painter has at one moment.
class CoordMap {
public:
    /// Without a painter, coordinates are pixels.
    explicit CoordMap(tamsel7::IPainter* painter);
    CoordMap(tamsel7::IPainter::MapMode mode, const tamsel7::IPainter::CoordInfo& info);

    tamsel7::point<double> ToLogical(const tamsel7::point<double>& pixel) const;
    tamsel7::point<double> ToPixel(const tamsel7::point<double>& logical) const;
    tamsel7::rectangle<double> ToLogical(const tamsel7::rectangle<double>& pixels) const;
    tamsel7::rectangle<double> ToPixel(const tamsel7::rectangle<double>& logical) const;

    /// True where a mapping has an extent on both sides; painters ignore one without.
    static bool IsUsable(const tamsel7::IPainter::CoordInfo& info);

private:
    bool mapped;
    tamsel7::IPainter::CoordInfo info;
};

/// A painter that takes a coordinate system and draws nothing: it asks an element for its
/// coordinates outside of a paint.
class CoordProbe final : public tamsel7::IPainter {
public:
    explicit CoordProbe(const tamsel7::rectangle<int>& area_of_element) : area(area_of_element) {}

    void SetCoordSystem(MapMode new_mode, CoordInfo* new_info) override;
    void GetCoordSystem(MapMode& current, CoordInfo* current_info) override;
    tamsel7::rectangle<int> GetDrawArea() override { return area; }

    void BeginPaint(StdSettings) override {}
    void EndPaint() override {}
    void SetClipRect(double, double, double, double, bool) override {}
    void CancelClip() override {}
    void SetPen(const tamsel7::pen&) override {}
    void SetBrush(const tamsel7::brush&) override {}
    void SetFont(const tamsel7::font&) override {}
    void SetTextColor(const tamsel7::_color&) override {}
    void MoveTo(double, double) override {}
    void LineTo(double, double) override {}
    void BeginPlot(PlotType) override {}
    void Vertex(double, double) override {}
    void EndPlot() override {}
    void SetArrowSize(tamsel7::size<int>) override {}
    void Rectangle(double, double, double, double) override {}
    void RoundRect(double, double, double, double, double, double) override {}
    void FillRect(double, double, double, double) override {}
    void GradientFill(double, double, double, double, const tamsel7::_color&,
                      const tamsel7::_color&, unsigned long, GradientDirection) override {}
    void DrawFocusFrame(double, double, double, double) override {}
    void DrawString(const tamsel7::rectangle<double>&, const std::string&, int, int) override {}
    tamsel7::size<double> GetTextSize(const std::string&, const tamsel7::font*, int, bool,
                                      bool) override {
        return {};
    }

private:
    tamsel7::rectangle<int> area;
    MapMode mode = MapMode::MAP_DEVICE;
    CoordInfo info;
};

} // namespace brevolt7
