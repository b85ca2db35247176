#include "nurvex7/platform/brevolt7/element_painter.h"

#include "nurvex7/platform/brevolt7/coord_map.h"

#include <algorithm>

namespace brevolt7 {

namespace {

using doubles = tamsel7::rectangle<double>;

/// What two rectangles have in common; turned inside out becomes empty.
doubles common(const doubles& a, const doubles& b) {
    const double left = std::max(a.left, b.left);
    const double top = std::max(a.top, b.top);
    return {left, top, std::max(left, std::min(a.right, b.right)),
            std::max(top, std::min(a.bottom, b.bottom))};
}

/// One unit is one pixel of the element.
tamsel7::IPainter::CoordInfo in_pixels(const pixel_rect& bounds) {
    tamsel7::IPainter::CoordInfo info;
    info.device_width = std::max(1, bounds.right);
    info.device_height = std::max(1, bounds.bottom);
    info.logical_width = info.device_width;
    info.logical_height = info.device_height;
    return info;
}

} // namespace

ElementPainter::ElementPainter(tamsel7::IPainter& window_painter,
                               const tamsel7::point<int>& place_in_window,
                               const pixel_rect& element_bounds, const pixel_rect& own_area,
                               const pixel_rect& outer_area)
    : inner(window_painter), corner(place_in_window), bounds(element_bounds),
      own(to_doubles(own_area)), outer(to_doubles(outer_area)), clip(own),
      info(in_pixels(element_bounds)) {
    install();
    clip_to(own);
}

ElementPainter::~ElementPainter() {
    inner.CancelClip();
    CoordInfo none;
    inner.SetCoordSystem(MapMode::MAP_DEVICE, &none);
}

void ElementPainter::BeginPaint(StdSettings settings) {
    inner.BeginPaint(settings);
    paint_started = true;
}

void ElementPainter::EndPaint() {
    inner.EndPaint();
    paint_started = false;
}

// Coordinates

void ElementPainter::install() {
    CoordInfo in_window = info;
    in_window.device_x += corner.x;
    in_window.device_y += corner.y;
    inner.SetCoordSystem(MapMode::MAP_LOGICAL, &in_window);
}

void ElementPainter::SetCoordSystem(MapMode new_mode, CoordInfo* new_info) {
    if (new_mode != MapMode::MAP_LOGICAL) {
        mode = new_mode;
        info = in_pixels(bounds);
        install();
    } else if (new_info != nullptr && CoordMap::IsUsable(*new_info)) {
        mode = new_mode;
        info = *new_info;
        install();
    }
}

void ElementPainter::GetCoordSystem(MapMode& current, CoordInfo* current_info) {
    current = mode;
    if (current_info != nullptr) {
        *current_info = info;
    }
}

// Clip

void ElementPainter::SetClipRect(double left, double top, double right, double bottom, bool add) {
    const doubles wanted =
        CoordMap(MapMode::MAP_LOGICAL, info).ToPixel(doubles{left, top, right, bottom});
    const doubles allowed = common(wanted, add ? clip : outer);
    outside = outside || !(common(allowed, own) == allowed);
    clip_to(allowed);
}

void ElementPainter::CancelClip() {
    clip_to(own);
}

void ElementPainter::clip_to(const doubles& pixels) {
    clip = pixels;
    const doubles r = CoordMap(MapMode::MAP_LOGICAL, info).ToLogical(pixels);
    inner.SetClipRect(r.left, r.top, r.right, r.bottom, false);
}

// Figures

void ElementPainter::Rectangle(double left, double top, double right, double bottom) {
    inner.Rectangle(left, top, right, bottom);
}

void ElementPainter::RoundRect(double left, double top, double right, double bottom, double rx,
                               double ry) {
    inner.RoundRect(left, top, right, bottom, rx, ry);
}

void ElementPainter::FillRect(double left, double top, double right, double bottom) {
    inner.FillRect(left, top, right, bottom);
}

void ElementPainter::GradientFill(double left, double top, double right, double bottom,
                                  const tamsel7::_color& from, const tamsel7::_color& to,
                                  unsigned long steps, GradientDirection direction) {
    inner.GradientFill(left, top, right, bottom, from, to, steps, direction);
}

void ElementPainter::DrawFocusFrame(double left, double top, double right, double bottom) {
    inner.DrawFocusFrame(left, top, right, bottom);
}

void ElementPainter::DrawString(const doubles& area, const std::string& text, int format,
                                int reserved) {
    inner.DrawString(area, text, format, reserved);
}

tamsel7::size<double> ElementPainter::GetTextSize(const std::string& text,
                                                  const tamsel7::font* tool, int reserved,
                                                  bool flag_1, bool flag_2) {
    return inner.GetTextSize(text, tool, reserved, flag_1, flag_2);
}

} // namespace brevolt7
