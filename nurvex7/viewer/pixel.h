#pragma once

#include <algorithm>
#include <limits>

namespace nurvex7 {

/// A coordinate in pixels as the int below it towards 0. What is far outside of every screen, or no
/// number, ends at the limits of int: at a high zoom the whole graph has more pixels than that.
inline int to_pixel(double value) {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::max(least, std::min(value, most)));
}

} // namespace nurvex7
