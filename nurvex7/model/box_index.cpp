#include "nurvex7/model/box_index.h"

#include <array>
#include <cmath>
#include <limits>
#include <utility>

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

/// More than what rounding to floats, and a hit test that computes along a segment, can be off. The
/// smallest floats stand no closer together the smaller they are.
double slack_at(float a, float b) {
    using limits = std::numeric_limits<float>;
    return 4 * (static_cast<double>(limits::epsilon()) *
                    static_cast<double>(std::max(std::abs(a), std::abs(b))) +
                static_cast<double>(limits::denorm_min()));
}

} // namespace

/// What surrounds some bounds. Trapezoids over the same span make one; where spans differ, the
/// boxes around them do.
class BoxIndex::Hull {
public:
    void Add(const Bound& bound) {
        all.left = std::min(all.left, bound.left);
        all.right = std::max(all.right, bound.right);
        all.top_left = std::min(all.top_left, bound.top_left);
        all.top_right = std::min(all.top_right, bound.top_right);
        all.bottom_left = std::max(all.bottom_left, bound.bottom_left);
        all.bottom_right = std::max(all.bottom_right, bound.bottom_right);
        last_left = std::max(last_left, bound.left);
        first_right = std::min(first_right, bound.right);
    }

    bool IsEmpty() const { return all.left > last_left; }

    /// Duty: not empty
    Bound Get() const {
        if (all.left == last_left && all.right == first_right) {
            return all;
        }
        return {all.left, all.right, all.top(), all.top(), all.bottom(), all.bottom()};
    }

private:
    Bound all{INFINITE, -INFINITE, INFINITE, INFINITE, -INFINITE, -INFINITE};
    float last_left = -INFINITE;
    float first_right = INFINITE;
};

void BoxIndex::clear() {
    entries.clear();
    parts.clear();
}

void BoxIndex::add(const tamsel7::rectangle<double>& box, int value) {
    const float top = round_down(box.top);
    const float bottom = round_up(box.bottom);
    entries.push_back(
        {{round_down(box.left), round_up(box.right), top, top, bottom, bottom}, value});
}

void BoxIndex::add(const tamsel7::point<double>& a, const tamsel7::point<double>& b, int value) {
    const auto& [from, to] = b.x < a.x ? std::pair(b, a) : std::pair(a, b);
    entries.push_back({{round_down(from.x), round_up(to.x), round_down(from.y), round_down(to.y),
                        round_up(from.y), round_up(to.y)},
                       value});
}

/// Whether an area that meets the box around a trapezoid meets the trapezoid, too: whether that
/// reaches into the area anywhere between the sides of the area. What is no number keeps nothing
/// away, and an area turned inside out does not either: a hit test of it may still find a segment
/// that passes both of its sides.
bool BoxIndex::meets_between(const Bound& bound, const tamsel7::rectangle<double>& area) {
    const auto left = static_cast<double>(bound.left);
    const double width = static_cast<double>(bound.right) - left;
    const double slack = slack_at(bound.left, bound.right);
    const bool proper = area.left <= area.right && area.top <= area.bottom;
    if (!proper || !(width > slack) || width > static_cast<double>(LARGEST)) {
        return true;
    }
    const double from = std::max(0.0, (area.left - slack - left) / width);
    const double to = std::min(1.0, (area.right + slack - left) / width);
    const auto between = [](float at_left, float at_right, double part) {
        return static_cast<double>(at_left) * (1 - part) + static_cast<double>(at_right) * part;
    };
    const double high = area.top - slack_at(bound.top(), bound.bottom());
    const double low = area.bottom + slack_at(bound.top(), bound.bottom());
    const bool above = between(bound.bottom_left, bound.bottom_right, from) < high &&
                       between(bound.bottom_left, bound.bottom_right, to) < high;
    const bool below = between(bound.top_left, bound.top_right, from) > low &&
                       between(bound.top_left, bound.top_right, to) > low;
    return !above && !below;
}

void BoxIndex::build() {
    parts.assign(1, Part{});
}

/// Brings what is near each other together.
void BoxIndex::halve(std::size_t part, std::size_t first, std::size_t last) {
    const std::size_t halves = parts.size();
    parts.resize(halves + 2);
    const auto begin = entries.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(last);
    const auto cut = part_in_two(begin, end);
    parts[halves].bound = bound_around(begin, cut);
    parts[halves + 1].bound = bound_around(cut, end);
    parts[part].cut = static_cast<std::uint32_t>(cut - entries.begin());
    parts[part].halves = static_cast<std::uint32_t>(halves);
}

BoxIndex::entry_iterator BoxIndex::part_in_two(entry_iterator first, entry_iterator last) {
    const Cut cut = choose_cut(first, last);
    switch (cut.axis) {
    case axis_t::left_y:
        return part_along<axis_t::left_y>(first, last, cut.at);
    case axis_t::right_y:
        return part_along<axis_t::right_y>(first, last, cut.at);
    default:
        return part_along<axis_t::x>(first, last, cut.at);
    }
}

/// That which parts some samples into the smallest bounds. The height at either side is an axis of
/// its own, so that segments that cross each other in the midst of a gap are parted by where they
/// end.
BoxIndex::Cut BoxIndex::choose_cut(entry_iterator first, entry_iterator last) {
    std::array<Bound, SAMPLES> samples;
    const auto count = static_cast<std::size_t>(last - first);
    bool boxes = true;
    for (std::size_t i = 0; i < SAMPLES; ++i) {
        samples[i] = first[static_cast<std::ptrdiff_t>(count * i / SAMPLES)].bound;
        boxes = boxes && samples[i].is_box();
    }
    const Cut by_x = cut_along<axis_t::x>(samples);
    const Cut by_left = cut_along<axis_t::left_y>(samples);
    const Cut by_right = boxes ? by_left : cut_along<axis_t::right_y>(samples);
    const Cut& by_y = by_right.area < by_left.area ? by_right : by_left;
    return by_x.area < by_y.area ? by_x : by_y;
}

template <BoxIndex::axis_t axis>
float BoxIndex::middle_along(const Bound& bound) {
    switch (axis) {
    case axis_t::left_y:
        return middle(bound.top_left, bound.bottom_left);
    case axis_t::right_y:
        return middle(bound.top_right, bound.bottom_right);
    default:
        return middle(bound.left, bound.right);
    }
}

/// At the mean, which costs one look at each; where hardly anything lies at one of its sides, at
/// the median, so that the tree does not grow deep.
template <BoxIndex::axis_t axis>
BoxIndex::entry_iterator BoxIndex::part_along(entry_iterator first, entry_iterator last, float at) {
    const auto cut = std::partition(
        first, last, [at](const Entry& entry) { return !(middle_along<axis>(entry.bound) > at); });
    const auto least = (last - first) / 8;
    if (std::min(cut - first, last - cut) >= least) {
        return cut;
    }
    const auto half = first + (last - first) / 2;
    std::nth_element(first, half, last, [](const Entry& a, const Entry& b) {
        return middle_along<axis>(a.bound) < middle_along<axis>(b.bound);
    });
    return half;
}

/// Where all are at one place, the area is infinite.
template <BoxIndex::axis_t axis>
BoxIndex::Cut BoxIndex::cut_along(const std::array<Bound, SAMPLES>& samples) {
    float sum = 0;
    for (const Bound& sample : samples) {
        sum += middle_along<axis>(sample);
    }
    const float mean = sum / SAMPLES;
    std::array<Hull, 2> halves;
    for (const Bound& sample : samples) {
        halves[middle_along<axis>(sample) > mean ? 1 : 0].Add(sample);
    }
    const bool parts_them = !halves[0].IsEmpty() && !halves[1].IsEmpty();
    return {axis, mean,
            parts_them ? area_of(halves[0].Get()) + area_of(halves[1].Get())
                       : std::numeric_limits<double>::infinity()};
}

/// Twice that of a trapezoid, with a margin for those that are as thin as a line.
double BoxIndex::area_of(const Bound& bound) {
    const auto length = [](float from, float to) {
        return static_cast<double>(to) - static_cast<double>(from) + 1;
    };
    return length(bound.left, bound.right) * (length(bound.top_left, bound.bottom_left) +
                                              length(bound.top_right, bound.bottom_right));
}

BoxIndex::Bound BoxIndex::bound_around(entry_iterator first, entry_iterator last) {
    Hull hull;
    for (; first != last; ++first) {
        hull.Add(first->bound);
    }
    return hull.Get();
}

std::size_t BoxIndex::get_memory() const {
    return entries.capacity() * sizeof(Entry) + parts.capacity() * sizeof(Part);
}

} // namespace nurvex7
