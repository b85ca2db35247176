#pragma once

#include "nurvex7/platform/brevolt7/coord_map.h"
#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <cmath>
#include <string>
#include <vector>

namespace tests {

/// A small screen of letters: a filled rectangle writes the letter that is its colour's red, and a
/// focus frame swaps the case of what is under it.
class GridPainter : public tamsel7::IPainter {
public:
    GridPainter(int given_width, int given_height)
        : width(given_width), rows(static_cast<std::size_t>(given_height),
                                   std::string(static_cast<std::size_t>(given_width), '.')) {
        CancelClip();
    }

    /// The colour that paints a letter.
    static tamsel7::_color ink(char letter) {
        return tamsel7::_color(static_cast<std::uint8_t>(letter), 0, 0);
    }
    const std::vector<std::string>& GetRows() const { return rows; }

    /// Moves the letters of an area inside it.
    void Scroll(const brevolt7::pixel_rect& area, int dx, int dy) {
        const std::vector<std::string> old = rows;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                if (brevolt7::contains(area, {x - dx, y - dy, x - dx + 1, y - dy + 1})) {
                    at(x, y) =
                        old[static_cast<std::size_t>(y - dy)][static_cast<std::size_t>(x - dx)];
                }
            }
        }
    }

    void BeginPaint(StdSettings) override { paint_started = true; }
    void EndPaint() override { paint_started = false; }
    void SetCoordSystem(MapMode new_mode, CoordInfo* new_info) override {
        mode = new_mode;
        info = *new_info;
    }
    void GetCoordSystem(MapMode& current, CoordInfo* current_info) override {
        current = mode;
        *current_info = info;
    }
    void SetClipRect(double left, double top, double right, double bottom, bool) override {
        clip = pixels(left, top, right, bottom);
    }
    void CancelClip() override { clip = GetDrawArea(); }
    tamsel7::rectangle<int> GetDrawArea() override {
        return {0, 0, width, static_cast<int>(rows.size())};
    }
    void SetBrush(const tamsel7::brush& tool) override {
        letter = static_cast<char>(tool.color.red);
    }
    void FillRect(double left, double top, double right, double bottom) override {
        for_each_pixel(pixels(left, top, right, bottom), [&](char& c) { c = letter; });
    }
    void DrawFocusFrame(double left, double top, double right, double bottom) override {
        const brevolt7::pixel_rect r = pixels(left, top, right, bottom);
        const auto swap_case = [](char& c) { c = static_cast<char>(c ^ 0x20); };
        for_each_pixel({r.left, r.top, r.right, r.top + 1}, swap_case);
        for_each_pixel({r.left, r.top + 1, r.left + 1, r.bottom}, swap_case);
        for_each_pixel({r.right - 1, r.top + 1, r.right, r.bottom}, swap_case);
        for_each_pixel({r.left + 1, r.bottom - 1, r.right - 1, r.bottom}, swap_case);
    }

    void SetPen(const tamsel7::pen&) override {}
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
    void GradientFill(double, double, double, double, const tamsel7::_color&,
                      const tamsel7::_color&, unsigned long, GradientDirection) override {}
    void DrawString(const tamsel7::rectangle<double>&, const std::string&, int, int) override {}
    tamsel7::size<double> GetTextSize(const std::string&, const tamsel7::font*, int, bool,
                                      bool) override {
        return {};
    }

private:
    char& at(int x, int y) {
        return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
    }
    brevolt7::pixel_rect pixels(double left, double top, double right, double bottom) const {
        const tamsel7::rectangle<double> r =
            brevolt7::CoordMap(mode, info)
                .ToPixel(tamsel7::rectangle<double>{left, top, right, bottom});
        const auto whole = [](double v) { return static_cast<int>(std::floor(v + 0.5)); };
        return {whole(r.left), whole(r.top), whole(r.right), whole(r.bottom)};
    }
    template <typename Change>
    void for_each_pixel(const brevolt7::pixel_rect& area, Change change) {
        const brevolt7::pixel_rect r =
            brevolt7::intersection(brevolt7::intersection(area, clip), GetDrawArea());
        for (int y = r.top; y < r.bottom; ++y) {
            for (int x = r.left; x < r.right; ++x) {
                change(at(x, y));
            }
        }
    }

    int width;
    std::vector<std::string> rows;
    brevolt7::pixel_rect clip;
    char letter = '.';
    MapMode mode = MapMode::MAP_DEVICE;
    CoordInfo info;
};

} // namespace tests
