#include "nurvex7/platform/brevolt7/invalid_region.h"

#include <algorithm>
#include <cstddef>

namespace brevolt7 {

CInvalidRegion::CInvalidRegion(const tamsel7::rectangle<double>& draw,
                               const tamsel7::rectangle<double>& valid) {
    const double left = std::max(draw.left, valid.left);
    const double top = std::max(draw.top, valid.top);
    const double right = std::min(draw.right, valid.right);
    const double bottom = std::min(draw.bottom, valid.bottom);
    if (!(left < right && top < bottom)) {
        add(draw.left, draw.top, draw.right, draw.bottom);
        return;
    }
    add(draw.left, draw.top, draw.right, top);
    add(draw.left, top, left, bottom);
    add(right, top, draw.right, bottom);
    add(draw.left, bottom, draw.right, draw.bottom);
}

void CInvalidRegion::add(double left, double top, double right, double bottom) {
    if (left < right && top < bottom) {
        pieces[static_cast<std::size_t>(count)] = {left, top, right, bottom};
        ++count;
    }
}

tamsel7::rectangle<double> CInvalidRegion::operator[](int i) const {
    return pieces[static_cast<std::size_t>(i)];
}

} // namespace brevolt7
