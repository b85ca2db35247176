#pragma once

#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A number with at most three decimals and no trailing zeros.
inline std::string text_of(double value) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.3f", value);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.') {
        result.pop_back();
    }
    return result == "-0" ? "0" : result;
}

/// A colour as "#rrggbb", with "/alpha" where it is not opaque and "?" where it is a default.
inline std::string text_of(const tamsel7::_color& c) {
    char text[32];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", c.red, c.green, c.blue);
    std::string result = text;
    if (c.alpha != 255) {
        result += "/" + std::to_string(c.alpha);
    }
    return c.is_default != 0 ? result + "?" : result;
}

/// A painter that draws nothing, notes every call as one line of text, and measures text by its
/// number of characters.
class RecordingPainter : public tamsel7::IPainter {
public:
    double char_width = 6;
    double blank_width = 6; ///< of a blank, for tests in which letters are wider
    double char_height = 10;
    /// The font size at which a character has the size above; 0 for one size in all fonts.
    int base_font_size = 0;
    bool notes_measuring = true;
    tamsel7::rectangle<int> draw_area;
    tamsel7::font current_font;

    /// The lines since the last take.
    std::vector<std::string> take() { return std::exchange(lines, {}); }

    void BeginPaint(StdSettings settings) override {
        paint_started = true;
        note("BeginPaint " + std::to_string(static_cast<int>(settings)));
    }
    void EndPaint() override {
        paint_started = false;
        note("EndPaint");
    }

    void SetCoordSystem(MapMode mode, CoordInfo* info) override {
        map_mode = mode;
        coord_info = *info;
        note(
            "SetCoordSystem " + std::to_string(static_cast<int>(mode)) + " " +
            numbers({info->logical_x, info->logical_y, info->logical_width, info->logical_height}) +
            " on " +
            numbers({1.0 * info->device_x, 1.0 * info->device_y, 1.0 * info->device_width,
                     1.0 * info->device_height}));
    }
    void GetCoordSystem(MapMode& mode, CoordInfo* info) override {
        mode = map_mode;
        *info = coord_info;
        note("GetCoordSystem");
    }

    void SetClipRect(double left, double top, double right, double bottom, bool add) override {
        note("SetClipRect " + numbers({left, top, right, bottom}) + (add ? " add" : ""));
    }
    void CancelClip() override { note("CancelClip"); }
    tamsel7::rectangle<int> GetDrawArea() override {
        note("GetDrawArea");
        return draw_area;
    }

    void SetPen(const tamsel7::pen& tool) override {
        note("SetPen " + text_of(tool.color) + " width " + std::to_string(tool.width) + " style " +
             std::to_string(tool.style));
    }
    void SetBrush(const tamsel7::brush& tool) override {
        note("SetBrush " + text_of(tool.color) + " style " + std::to_string(tool.style));
    }
    void SetFont(const tamsel7::font& tool) override {
        current_font = tool;
        note("SetFont '" + tool.name + "' style " + std::to_string(tool.style) + " size " +
             std::to_string(tool.size));
    }
    void SetTextColor(const tamsel7::_color& color) override {
        note("SetTextColor " + text_of(color));
    }

    void MoveTo(double x, double y) override { note("MoveTo " + numbers({x, y})); }
    void LineTo(double x, double y) override { note("LineTo " + numbers({x, y})); }
    void BeginPlot(PlotType type) override {
        note("BeginPlot " + std::to_string(static_cast<int>(type)));
    }
    void Vertex(double x, double y) override { note("Vertex " + numbers({x, y})); }
    void EndPlot() override { note("EndPlot"); }
    void SetArrowSize(tamsel7::size<int> head) override {
        note("SetArrowSize " + numbers({1.0 * head.width, 1.0 * head.height}));
    }

    void Rectangle(double left, double top, double right, double bottom) override {
        note("Rectangle " + numbers({left, top, right, bottom}));
    }
    void RoundRect(double left, double top, double right, double bottom, double rx,
                   double ry) override {
        note("RoundRect " + numbers({left, top, right, bottom}) + " radii " + numbers({rx, ry}));
    }
    void FillRect(double left, double top, double right, double bottom) override {
        note("FillRect " + numbers({left, top, right, bottom}));
    }
    void GradientFill(double left, double top, double right, double bottom,
                      const tamsel7::_color& from, const tamsel7::_color& to, unsigned long steps,
                      GradientDirection direction) override {
        note("GradientFill " + numbers({left, top, right, bottom}) + " " + text_of(from) + " to " +
             text_of(to) + " steps " + std::to_string(steps) + " direction " +
             std::to_string(static_cast<int>(direction)));
    }

    void DrawFocusFrame(double left, double top, double right, double bottom) override {
        note("DrawFocusFrame " + numbers({left, top, right, bottom}));
    }

    void DrawString(const tamsel7::rectangle<double>& area, const std::string& text, int format,
                    int reserved) override {
        note("DrawString " + numbers({area.left, area.top, area.right, area.bottom}) + " '" + text +
             "' format " + std::to_string(format) + " " + std::to_string(reserved));
    }
    tamsel7::size<double> GetTextSize(const std::string& text, const tamsel7::font* tool, int, bool,
                                      bool) override {
        if (notes_measuring) {
            note("GetTextSize '" + text + "'");
        }
        const tamsel7::font& in_use = tool != nullptr ? *tool : current_font;
        const double scale =
            base_font_size > 0 ? in_use.size / static_cast<double>(base_font_size) : 1.0;
        const auto blanks = static_cast<double>(std::count(text.begin(), text.end(), ' '));
        const double letters = static_cast<double>(text.size()) - blanks;
        return {(letters * char_width + blanks * blank_width) * scale, char_height * scale};
    }

private:
    static std::string numbers(const std::vector<double>& values) {
        std::string result;
        for (const double value : values) {
            result += (result.empty() ? "" : ",") + text_of(value);
        }
        return result;
    }
    void note(std::string line) { lines.push_back(std::move(line)); }

    std::vector<std::string> lines;
    MapMode map_mode = MapMode::MAP_DEVICE;
    CoordInfo coord_info;
};

} // namespace tests
