#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <array>

namespace brevolt7 {

/// The pieces of a rectangle that lie outside another one.
///
/// Order   the piece above, the one on the left, the one on the right, the one below; those that
///         are empty are left out. They do not overlap.
class NURVEX7_API CInvalidRegion {
public:
    int count = 0;

    /// Nothing to paint in an empty `draw`, everything where `valid` is empty or lies elsewhere.
    CInvalidRegion(const tamsel7::rectangle<double>& draw, const tamsel7::rectangle<double>& valid);

    /// Duty    0 <= i < count
    tamsel7::rectangle<double> operator[](int i) const;

private:
    void add(double left, double top, double right, double bottom);

    std::array<tamsel7::rectangle<double>, 4> pieces;
};

} // namespace brevolt7
