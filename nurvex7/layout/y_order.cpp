#include "nurvex7/layout/y_order.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nurvex7 {

namespace {

using turn_iterator = std::vector<Turn>::iterator;

constexpr std::ptrdiff_t FEW = 16;

bool _is_above(const Turn& a, const Turn& b) {
    return a.y < b.y;
}

void _sort_some(turn_iterator first, turn_iterator last) {
    if (last - first > FEW) {
        std::stable_sort(first, last, _is_above);
        return;
    }
    for (auto next = first; next != last; ++next) {
        const Turn turn = *next;
        auto hole = next;
        for (; hole != first && _is_above(turn, *(hole - 1)); --hole) {
            *hole = *(hole - 1);
        }
        *hole = turn;
    }
}

/// Tells the stretch of a level that a y lies in: as many as there are nodes, all of one length.
struct Stretches {
    double lowest;
    double per_unit;
    std::size_t count;

    std::size_t of(double y) const {
        return std::min(static_cast<std::size_t>((y - lowest) * per_unit), count - 1);
    }
};

// Stretch by stretch (Isaac and Singleton, "Sorting by address calculation", 1956).
void _sort_by_stretches(std::vector<Turn>& turns, const Stretches& stretches) {
    std::vector<std::size_t> next(stretches.count + 1, 0);
    for (const Turn& turn : turns) {
        ++next[stretches.of(turn.y) + 1];
    }
    for (std::size_t s = 1; s < next.size(); ++s) {
        next[s] += next[s - 1];
    }
    std::vector<Turn> sorted(turns.size());
    for (const Turn& turn : turns) {
        sorted[next[stretches.of(turn.y)]++] = turn;
    }
    turns.swap(sorted);
    auto first = turns.begin();
    for (std::size_t s = 0; s < stretches.count; ++s) {
        const auto last = turns.begin() + static_cast<std::ptrdiff_t>(next[s]);
        _sort_some(first, last);
        first = last;
    }
}

} // namespace

// The nodes of a level stand about evenly along it, so that few of them lie in one stretch.
void sort_by_y(std::vector<Turn>& turns) {
    const auto is_finite = [](const Turn& turn) { return std::isfinite(turn.y); };
    if (!std::all_of(turns.begin(), turns.end(), is_finite)) {
        std::stable_sort(turns.begin(), turns.end(), _is_above);
        return;
    }
    if (std::is_sorted(turns.begin(), turns.end(), _is_above)) {
        return;
    }
    const auto ends = std::minmax_element(turns.begin(), turns.end(), _is_above);
    const double lowest = ends.first->y;
    const double length = ends.second->y - lowest;
    const double per_unit = static_cast<double>(turns.size() - 1) / length;
    if (std::isfinite(length) && std::isfinite(per_unit)) {
        _sort_by_stretches(turns, Stretches{lowest, per_unit, turns.size()});
    } else {
        std::stable_sort(turns.begin(), turns.end(), _is_above);
    }
}

} // namespace nurvex7
