#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nurvex7 {

/// Finds the boxes and segments that meet a rectangle without looking at all of them: for small
/// ones that hardly overlap, and for segments side by side, the time grows with those found, and at
/// the worst with the square root of all.
///
/// They are parted in two, along the axis that leaves the smallest bounds, as the surface area
/// heuristic wants it (MacDonald and Booth, "Heuristics for ray tracing using space subdivision",
/// 1990), and these again, until a handful is left.
///
/// A part is parted when somebody looks into it for the first time. After a layout has moved
/// everything, the window that is painted needs a few of the parts: the others cost nothing until
/// someone scrolls there.
///
/// Edges cross the gap between two columns side by side, often far steeper than the gap is wide,
/// and a point between them lies in the bounding boxes of most. What starts at one x and ends at
/// another is therefore bounded by a trapezoid.
///
/// Bounds are kept as floats, rounded outwards: something may be found that misses the rectangle
/// by a hair, and nothing that meets it is left out.
///
/// Space   any one
class BoxIndex {
public:
    void clear();
    void reserve(std::size_t count) { entries.reserve(count); }
    /// Enters a box. A bound that is no number keeps no rectangle away. Duty: build comes after it.
    void add(const tamsel7::rectangle<double>& box, int value);
    /// Enters a segment, likewise.
    void add(const tamsel7::point<double>& a, const tamsel7::point<double>& b, int value);
    void build();

    /// Calls `found(value)` for what has a point in common with an area, borders included.
    ///
    /// Order   none
    template <typename F>
    void find(const tamsel7::rectangle<double>& area, F found) {
        find_in(0, 0, entries.size(), area, found);
    }

    std::size_t size() const { return entries.size(); }
    /// In bytes.
    std::size_t get_memory() const;

private:
    static constexpr std::size_t GROUP = 16;

    /// A trapezoid with upright sides.
    struct Bound {
        float left;
        float right;
        float top_left;
        float top_right;
        float bottom_left;
        float bottom_right;

        float top() const { return std::min(top_left, top_right); }
        float bottom() const { return std::max(bottom_left, bottom_right); }
        bool is_box() const { return top_left == top_right && bottom_left == bottom_right; }
    };
    struct Entry {
        Bound bound;
        int value;
    };
    using entry_iterator = std::vector<Entry>::iterator;
    class Hull;
    /// Entries side by side, and what surrounds them.
    struct Part {
        Bound bound;
        std::uint32_t halves; ///< the place of the first, the second behind it; 0 while not parted
        std::uint32_t cut;    ///< where the second half begins among the entries
    };

    // Written so that a side of the area that is no number keeps nothing away.
    static bool meets(const Bound& bound, const tamsel7::rectangle<double>& area) {
        return !(bound.right < area.left || bound.left > area.right || bound.bottom() < area.top ||
                 bound.top() > area.bottom) &&
               (bound.is_box() || meets_between(bound, area));
    }
    static bool meets_between(const Bound& bound, const tamsel7::rectangle<double>& area);

    template <typename F>
    void find_in(std::size_t part, std::size_t first, std::size_t last,
                 const tamsel7::rectangle<double>& area, F& found) {
        if (last - first <= GROUP) {
            find_among(first, last, area, found);
            return;
        }
        if (parts[part].halves == 0) {
            halve(part, first, last);
        }
        const std::size_t half = parts[part].halves;
        const std::size_t cut = parts[part].cut;
        if (meets(parts[half].bound, area)) {
            find_in(half, first, cut, area, found);
        }
        if (meets(parts[half + 1].bound, area)) {
            find_in(half + 1, cut, last, area, found);
        }
    }

    template <typename F>
    void find_among(std::size_t first, std::size_t last, const tamsel7::rectangle<double>& area,
                    F& found) const {
        for (std::size_t i = first; i < last; ++i) {
            if (meets(entries[i].bound, area)) {
                found(entries[i].value);
            }
        }
    }

    enum class axis_t { x, left_y, right_y };
    static constexpr std::size_t SAMPLES = 32;

    /// Where some samples would be parted along an axis.
    struct Cut {
        axis_t axis;
        float at;    ///< twice the mean of their middles
        double area; ///< what the halves cover together
    };

    void halve(std::size_t part, std::size_t first, std::size_t last);
    static entry_iterator part_in_two(entry_iterator first, entry_iterator last);
    static Cut choose_cut(entry_iterator first, entry_iterator last);
    template <axis_t axis>
    static float middle_along(const Bound& bound);
    template <axis_t axis>
    static entry_iterator part_along(entry_iterator first, entry_iterator last, float at);
    template <axis_t axis>
    static Cut cut_along(const std::array<Bound, SAMPLES>& samples);
    static double area_of(const Bound& bound);
    static Bound bound_around(entry_iterator first, entry_iterator last);

    std::vector<Entry> entries;
    std::vector<Part> parts; ///< the whole at first
};

} // namespace nurvex7
