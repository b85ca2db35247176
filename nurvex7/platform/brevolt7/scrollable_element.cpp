#include "nurvex7/platform/brevolt7/scrollable_element.h"

#include <algorithm>

namespace brevolt7 {

namespace {

/// Scrolls one direction by its least distance towards `at`, where that lies outside.
void step_towards(IScrollModel* model, int at, int low, int high) {
    if (model == nullptr || (at >= low && at < high)) {
        return;
    }
    const auto [length, pixels] = model->GetMeasure();
    const double step = model->GetMinScrollDistance() * length / std::max(1, pixels);
    const double last =
        std::max(model->GetFrom(), model->GetTo() - (high - low) * length / std::max(1, pixels));
    const double wanted = model->GetStart() + (at < low ? -step : step);
    model->SetStart(std::clamp(wanted, model->GetFrom(), last));
}

/// The logical origin and extent of one direction with `pixels` pixels.
void fill_direction(const IScrollModel* model, int pixels, double& origin, double& extent) {
    origin = 0;
    extent = pixels;
    if (model != nullptr) {
        const auto [length, on_pixels] = model->GetMeasure();
        origin = model->GetStart();
        if (length > 0 && on_pixels > 0) {
            extent = pixels * length / on_pixels;
        }
    }
}

} // namespace

void CScrollableElement::SetCentralPane(CVisualElement* /*pane*/) {}

void CScrollableElement::SetVertScroll(IScrollModel* model) {
    vert_scroll = model;
}

void CScrollableElement::SetHorzScroll(IScrollModel* model) {
    horz_scroll = model;
}

void CScrollableElement::ProcessRepeatOperation() {
    if (GetControl() == nullptr) {
        return;
    }
    const tamsel7::point<int> at = FromWindow(GetControl()->GetPointer());
    const tamsel7::rectangle<int> content = GetContentRect();
    step_towards(horz_scroll, at.x, content.left, content.right);
    step_towards(vert_scroll, at.y, content.top, content.bottom);
}

void CScrollableElement::FillCoordInfo(tamsel7::IPainter::CoordInfo* info) {
    const tamsel7::rectangle<int> content = GetContentRect();
    info->device_x = content.left;
    info->device_y = content.top;
    // An element without pixels keeps its scale: points are converted for it all the same.
    info->device_width = std::max(1, content.right - content.left);
    info->device_height = std::max(1, content.bottom - content.top);
    fill_direction(horz_scroll, info->device_width, info->logical_x, info->logical_width);
    fill_direction(vert_scroll, info->device_height, info->logical_y, info->logical_height);
}

} // namespace brevolt7
