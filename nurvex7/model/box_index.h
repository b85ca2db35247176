#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Finds the boxes that meet a rectangle without looking at all of them: for small boxes that
/// hardly overlap the time grows with those found, and at the worst with the square root of all.
///
/// The boxes are parted in two along the longer side of what their middles cover, and these again,
/// until a handful is left (Bentley, "Multidimensional binary search trees", 1975); 16 neighbours
/// share a bounding box, 16 of these the next, so that the tree needs no pointers, as in a packed
/// R-tree (Leutenegger, Lopez and Edgington, "STR", 1997). It is built as a whole and never
/// changed.
///
/// Bounds are kept as floats, rounded outwards: a box may be found that misses the rectangle by a
/// hair, and none that meets it is left out.
///
/// Space   any one
class BoxIndex {
public:
    void clear();
    void reserve(std::size_t count) { entries.reserve(count); }
    /// Enters a box. A bound that is no number keeps no rectangle away. Duty: build comes after it.
    void add(const tamsel7::rectangle<double>& box, int value);
    void build();

    /// Calls `found(value)` for each box that has a point in common with an area, borders included.
    ///
    /// Order   none
    template <typename F>
    void find(const tamsel7::rectangle<double>& area, F found) const {
        if (!levels.empty()) {
            find_in(levels.size(), 0, levels.back().size(), area, found);
        } else {
            find_among(0, entries.size(), area, found);
        }
    }

    std::size_t size() const { return entries.size(); }
    /// In bytes.
    std::size_t get_memory() const;

private:
    static constexpr std::size_t GROUP = 16;

    struct Box {
        float left;
        float top;
        float right;
        float bottom;
    };
    struct Entry {
        Box box;
        int value;
    };
    using entry_iterator = std::vector<Entry>::iterator;

    // Written so that a side of the area that is no number keeps nothing away.
    static bool meets(const Box& box, const tamsel7::rectangle<double>& area) {
        return !(box.right < area.left || box.left > area.right || box.bottom < area.top ||
                 box.top > area.bottom);
    }

    /// The boxes of a level that surround groups of the one below; level 0 is that of the entries.
    template <typename F>
    void find_in(std::size_t level, std::size_t first, std::size_t last,
                 const tamsel7::rectangle<double>& area, F& found) const {
        if (level == 0) {
            find_among(first, last, area, found);
            return;
        }
        const std::size_t below = level > 1 ? levels[level - 2].size() : entries.size();
        for (std::size_t i = first; i < last; ++i) {
            if (meets(levels[level - 1][i], area)) {
                find_in(level - 1, i * GROUP, std::min(below, (i + 1) * GROUP), area, found);
            }
        }
    }

    template <typename F>
    void find_among(std::size_t first, std::size_t last, const tamsel7::rectangle<double>& area,
                    F& found) const {
        for (std::size_t i = first; i < last; ++i) {
            if (meets(entries[i].box, area)) {
                found(entries[i].value);
            }
        }
    }

    static void widen(Box& box, const Box& by);
    static void part(entry_iterator first, entry_iterator last);
    template <typename Boxes>
    void add_level(const Boxes& below);

    std::vector<Entry> entries;
    std::vector<std::vector<Box>> levels; ///< the innermost first
};

} // namespace nurvex7
