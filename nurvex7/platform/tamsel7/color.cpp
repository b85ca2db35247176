#include "nurvex7/platform/tamsel7/color.h"

#include <algorithm>

namespace tamsel7 {
namespace {

/// The hue in degrees of bytes that are not all equal; `d` is the largest less the smallest.
double hue_of(int r, int g, int b, int d) {
    double hue;
    if (r >= g && r >= b) {
        hue = (g - b) * 60 / static_cast<double>(d) + 360.0;
    } else if (g >= b) {
        hue = (b - r) * 60 / static_cast<double>(d) + 120.0;
    } else {
        hue = (r - g) * 60 / static_cast<double>(d) + 240.0;
    }
    return hue >= 360.0 ? hue - 360.0 : hue;
}

/// One component of a colour: a trapezium over the circle of hues between m1 and m2.
std::uint8_t component(double m1, double m2, double h) {
    while (h > 360.0) {
        h -= 360.0;
    }
    while (h < 0.0) {
        h += 360.0;
    }
    double value = m1;
    if (h < 60.0) {
        value = m1 + (m2 - m1) * h / 60.0;
    } else if (h < 180.0) {
        value = m2;
    } else if (h < 240.0) {
        value = m1 + (m2 - m1) * (240.0 - h) / 60.0;
    }
    return static_cast<std::uint8_t>(static_cast<int>(value * 255.0));
}

/// The source with a lightness that `change` makes of its own.
///
/// Deliberate: made on a fresh colour, so that the result carries the mark of a colour that nobody
/// has chosen, although its source does not.
template <typename F>
_color with_lightness(const _color& source, F change) {
    double lightness;
    double saturation;
    double hue;
    source.GetHLS(lightness, saturation, hue);
    _color result;
    result.SetHLS(change(lightness), saturation, hue);
    result.alpha = source.alpha;
    return result;
}

} // namespace

void _color::GetHLS(double& lightness, double& saturation, double& hue) const {
    const int r = red;
    const int g = green;
    const int b = blue;
    const int mx = std::max({r, g, b});
    const int mn = std::min({r, g, b});
    if (mx == mn) {
        lightness = mn / 255.0;
        saturation = 0.0;
        hue = 0.0;
        return;
    }
    const int d = mx - mn;
    lightness = (mn + mx) / 510.0;
    saturation = lightness <= 0.5 ? d / static_cast<double>(mn + mx) : d / (510.0 - mn - mx);
    hue = hue_of(r, g, b, d);
}

void _color::SetHLS(double lightness, double saturation, double hue) {
    if (saturation == 0.0) {
        red = green = blue = static_cast<std::uint8_t>(static_cast<int>(lightness * 255.0));
        return;
    }
    const double m2 = lightness <= 0.5 ? lightness + lightness * saturation
                                       : (saturation + lightness) - lightness * saturation;
    const double m1 = 2 * lightness - m2;
    red = component(m1, m2, hue + 120.0);
    green = component(m1, m2, hue);
    blue = component(m1, m2, hue - 120.0);
}

_color lighten(const _color& source) {
    return with_lightness(source,
                          [](double l) { return std::min(1.0, l + ((1.0 - l) * 30.0) / 100.0); });
}

_color darken(const _color& source, int percent) {
    return with_lightness(source, [percent](double l) { return l - (l * percent) / 100; });
}

} // namespace tamsel7
