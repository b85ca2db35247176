#include "nurvex7/platform/brevolt7/coord_map.h"

namespace brevolt7 {

CoordMap::CoordMap(tamsel7::IPainter* painter) : mapped(false) {
    if (painter != nullptr) {
        tamsel7::IPainter::MapMode mode = tamsel7::IPainter::MapMode::MAP_DEVICE;
        painter->GetCoordSystem(mode, &info);
        mapped = mode == tamsel7::IPainter::MapMode::MAP_LOGICAL && IsUsable(info);
    }
}

CoordMap::CoordMap(tamsel7::IPainter::MapMode mode, const tamsel7::IPainter::CoordInfo& given)
    : mapped(mode == tamsel7::IPainter::MapMode::MAP_LOGICAL && IsUsable(given)), info(given) {}

bool CoordMap::IsUsable(const tamsel7::IPainter::CoordInfo& info) {
    return info.logical_width > 0 && info.logical_height > 0 && info.device_width > 0 &&
           info.device_height > 0;
}

tamsel7::point<double> CoordMap::ToLogical(const tamsel7::point<double>& pixel) const {
    if (!mapped) {
        return pixel;
    }
    return {(pixel.x - info.device_x) * info.logical_width / info.device_width + info.logical_x,
            (pixel.y - info.device_y) * info.logical_height / info.device_height + info.logical_y};
}

tamsel7::point<double> CoordMap::ToPixel(const tamsel7::point<double>& logical) const {
    if (!mapped) {
        return logical;
    }
    return {(logical.x - info.logical_x) * info.device_width / info.logical_width + info.device_x,
            (logical.y - info.logical_y) * info.device_height / info.logical_height +
                info.device_y};
}

tamsel7::rectangle<double> CoordMap::ToLogical(const tamsel7::rectangle<double>& pixels) const {
    const tamsel7::point<double> a = ToLogical(tamsel7::point<double>{pixels.left, pixels.top});
    const tamsel7::point<double> b = ToLogical(tamsel7::point<double>{pixels.right, pixels.bottom});
    return {a.x, a.y, b.x, b.y};
}

tamsel7::rectangle<double> CoordMap::ToPixel(const tamsel7::rectangle<double>& logical) const {
    const tamsel7::point<double> a = ToPixel(tamsel7::point<double>{logical.left, logical.top});
    const tamsel7::point<double> b = ToPixel(tamsel7::point<double>{logical.right, logical.bottom});
    return {a.x, a.y, b.x, b.y};
}

void CoordProbe::SetCoordSystem(MapMode new_mode, CoordInfo* new_info) {
    if (new_mode != MapMode::MAP_LOGICAL) {
        mode = new_mode;
    } else if (new_info != nullptr && CoordMap::IsUsable(*new_info)) {
        mode = new_mode;
        info = *new_info;
    }
}

void CoordProbe::GetCoordSystem(MapMode& current, CoordInfo* current_info) {
    current = mode;
    if (current_info != nullptr) {
        *current_info = info;
    }
}

} // namespace brevolt7
