#include "nurvex7/model/box_index.h"

#include <cmath>
#include <limits>

namespace nurvex7 {

namespace {

constexpr float LARGEST = std::numeric_limits<float>::max();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

/// The largest float that is not above a value; as low as can be where the value is no number.
float round_down(double value) {
    if (!(value >= -static_cast<double>(LARGEST))) {
        return -INFINITE;
    }
    if (value > static_cast<double>(LARGEST)) {
        return LARGEST;
    }
    const auto near = static_cast<float>(value);
    return static_cast<double>(near) <= value ? near : std::nextafter(near, -INFINITE);
}

float round_up(double value) {
    return -round_down(-value);
}

/// Twice the middle of a side, which may reach from end to end of all numbers.
float middle(float low, float high) {
    const float sum = low + high;
    return std::isnan(sum) ? 0 : sum;
}

} // namespace

void BoxIndex::clear() {
    entries.clear();
    levels.clear();
}

void BoxIndex::add(const tamsel7::rectangle<double>& box, int value) {
    entries.push_back(
        {{round_down(box.left), round_down(box.top), round_up(box.right), round_up(box.bottom)},
         value});
}

void BoxIndex::build() {
    part(entries.begin(), entries.end());
    levels.clear();
    if (entries.size() > GROUP) {
        add_level(entries);
    }
    while (!levels.empty() && levels.back().size() > GROUP) {
        add_level(levels.back());
    }
}

/// Brings what is near each other together. Every cut leaves a number of whole groups before it.
void BoxIndex::part(entry_iterator first, entry_iterator last) {
    const auto count = static_cast<std::size_t>(last - first);
    if (count <= GROUP) {
        return;
    }
    Box centres{INFINITE, INFINITE, -INFINITE, -INFINITE};
    for (auto at = first; at != last; ++at) {
        const float x = middle(at->box.left, at->box.right);
        const float y = middle(at->box.top, at->box.bottom);
        widen(centres, {x, y, x, y});
    }
    std::size_t before = GROUP;
    while (before * 2 < count) {
        before *= 2;
    }
    const auto cut = first + static_cast<std::ptrdiff_t>(before);
    if (centres.right - centres.left > centres.bottom - centres.top) {
        std::nth_element(first, cut, last, [](const Entry& a, const Entry& b) {
            return middle(a.box.left, a.box.right) < middle(b.box.left, b.box.right);
        });
    } else {
        std::nth_element(first, cut, last, [](const Entry& a, const Entry& b) {
            return middle(a.box.top, a.box.bottom) < middle(b.box.top, b.box.bottom);
        });
    }
    part(first, cut);
    part(cut, last);
}

void BoxIndex::widen(Box& box, const Box& by) {
    box.left = std::min(box.left, by.left);
    box.top = std::min(box.top, by.top);
    box.right = std::max(box.right, by.right);
    box.bottom = std::max(box.bottom, by.bottom);
}

namespace {

template <typename Entry>
const auto& box_of(const Entry& entry) {
    if constexpr (requires { entry.box; }) {
        return entry.box;
    } else {
        return entry;
    }
}

} // namespace

template <typename Boxes>
void BoxIndex::add_level(const Boxes& below) {
    std::vector<Box> level((below.size() + GROUP - 1) / GROUP,
                           Box{INFINITE, INFINITE, -INFINITE, -INFINITE});
    for (std::size_t i = 0; i < below.size(); ++i) {
        widen(level[i / GROUP], box_of(below[i]));
    }
    levels.push_back(std::move(level));
}

std::size_t BoxIndex::get_memory() const {
    std::size_t bytes = entries.capacity() * sizeof(Entry);
    for (const std::vector<Box>& level : levels) {
        bytes += level.capacity() * sizeof(Box);
    }
    return bytes;
}

} // namespace nurvex7
