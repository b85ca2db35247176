#include "nurvex7/platform/brevolt7/scroll_state.h"

#include "nurvex7/platform/brevolt7/scroll_model.h"

#include <algorithm>

namespace brevolt7 {

ScrollState ScrollState::Of(const IScrollModel* model, int pixels) {
    ScrollState state;
    if (model == nullptr) {
        return state;
    }
    const auto [length, on_pixels] = model->GetMeasure();
    state.start = model->GetStart();
    state.span = on_pixels > 0 ? pixels * length / on_pixels : 0;
    state.from = std::min(model->GetFrom(), state.start);
    state.to = std::max(model->GetTo(), state.start + state.span);
    return state;
}

bool ScrollState::IsScrollable(const IScrollModel* model) const {
    if (model == nullptr) {
        return false;
    }
    const auto [length, on_pixels] = model->GetMeasure();
    const double half_pixel = on_pixels > 0 ? 0.5 * length / on_pixels : 0;
    return start - from > half_pixel || to - (start + span) > half_pixel;
}

} // namespace brevolt7
