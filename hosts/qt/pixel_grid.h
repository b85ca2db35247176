#pragma once

#include <algorithm>
#include <cmath>

namespace nurvex7::qt {

/// Where the pixels of a surface lie along one axis, so that lines can be put on them.
///
/// Space   device: what a Canvas draws in. A pixel of the surface is 1 / scale device units.
/// A scale of 0 stands for a surface without pixels: everything stays where it is.
struct PixelGrid {
    double scale = 0;
    double shift = 0;

    /// The centre of a line of that width, so that the line covers whole pixels.
    double AlignLine(double at, double width) const {
        if (scale <= 0) {
            return at;
        }
        const double pixel = at * scale + shift;
        const bool odd = std::lround(AlignWidth(width) * scale) % 2 != 0;
        const double aligned =
            odd ? std::floor(pixel + bias) + 0.5 : std::floor(pixel + 0.5 + bias);
        return (aligned - shift) / scale;
    }

    /// The nearest border between two pixels.
    double AlignEdge(double at) const {
        return scale <= 0 ? at : (std::floor(at * scale + shift + 0.5 + bias) - shift) / scale;
    }

    /// A whole number of pixels, at least one.
    double AlignWidth(double width) const {
        return scale <= 0 ? width : std::max(1.0, std::round(width * scale)) / scale;
    }

private:
    /// The upward bias with which the viewer turns graph coordinates into pixels: it keeps a value
    /// that rounding left just below a whole number on its pixel.
    static constexpr double bias = 0.05;
};

} // namespace nurvex7::qt
