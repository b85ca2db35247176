#pragma once

#include "nurvex7/export.h"

#include <cstdint>

namespace tamsel7 {

/// A colour of four bytes and the mark of a colour that nobody has chosen.
///
/// A default-constructed colour is the zero colour with `is_default` at 1: who draws with it is
/// free to take a colour of its own.
struct NURVEX7_API _color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;
    std::uint8_t is_default = 1;

    constexpr _color() = default;
    constexpr _color(std::uint8_t r, std::uint8_t g, std::uint8_t b, std::uint8_t a = 255)
        : red(r), green(g), blue(b), alpha(a), is_default(0) {}

    /// Lightness and saturation in 0 to 1, hue in degrees from 0 below 360.
    /// The double-hexcone model of Joblove and Greenberg (SIGGRAPH 1978), in the byte rule of the
    /// platform. Alpha plays no part.
    void GetHLS(double& lightness, double& saturation, double& hue) const;

    /// The inverse of GetHLS; the bytes are truncated, not rounded. Alpha and `is_default` stay.
    void SetHLS(double lightness, double saturation, double hue);
};

constexpr bool operator==(const _color& a, const _color& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha &&
           a.is_default == b.is_default;
}

/// The colour with its lightness moved 30 % of the way to white; hue, saturation and alpha stay.
///
/// Keeps   `is_default` is 1 in the result, whatever it was in the source: the result is made on a
///         fresh colour.
NURVEX7_API _color lighten(const _color& source);

/// The colour with its lightness reduced by a percentage of itself; hue, saturation and alpha stay.
///
/// Keeps   `is_default` is 1 in the result, as it is with lighten
/// Duty    percent is 0 to 100
NURVEX7_API _color darken(const _color& source, int percent);

} // namespace tamsel7
