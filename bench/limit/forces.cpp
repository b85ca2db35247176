#include "bench/limit/flat_layout.h"

#include <cstddef>

namespace limit {

// Moves the places of each level along it towards their neighbours, never past one another: the
// nodes in two sweeps, and then the dummies between them.
void FlatLayout::straighten() {
    const std::size_t last = level_nodes.size() - 2;
    const auto whole = [this](std::size_t k) {
        const places_t& places = level_nodes[k];
        return Stretch{places.data(), places.data() + places.size()};
    };
    for (std::size_t k = 2; k <= last; ++k) {
        adjust(whole(k), in_neighbours, /*with_dummies=*/false);
    }
    for (std::size_t k = last; k-- > 1;) {
        adjust(whole(k), out_neighbours, /*with_dummies=*/false);
    }
    for (std::size_t k = last; k-- > 1;) {
        straighten_dummies(level_nodes[k]);
    }
}

void FlatLayout::straighten_dummies(const places_t& places) {
    const index_t* const end = places.data() + places.size();
    Stretch stretch{places.data(), places.data()};
    while (stretch.first != end) {
        if (!is_dummy(*stretch.first)) {
            stretch.lower = y[*stretch.first] + room_of(*stretch.first) + NODE_GAP / 2;
            ++stretch.first;
            continue;
        }
        stretch.last = stretch.first;
        while (stretch.last != end && is_dummy(*stretch.last)) {
            ++stretch.last;
        }
        stretch.upper = stretch.last != end ? y[*stretch.last] - NODE_GAP / 2 : DBL_MAX;
        adjust(stretch, out_neighbours, /*with_dummies=*/true);
        stretch.first = stretch.last;
    }
}

void FlatLayout::adjust(const Stretch& stretch, const neighbours_t& neighbours, bool with_dummies) {
    pull(stretch, neighbours, with_dummies);
    settle(stretch);
    hold_upper_bound(stretch);
}

/// All forces are taken before anything moves.
void FlatLayout::pull(const Stretch& stretch, const neighbours_t& neighbours, bool with_dummies) {
    forces.clear();
    free.clear();
    for (const index_t* place = stretch.first; place != stretch.last; ++place) {
        index_t felt = 0;
        double sum = 0;
        if (with_dummies || !is_dummy(*place)) {
            sum = pull_on(*place, neighbours[*place], felt);
        }
        forces.push_back(felt > 0 ? sum / felt : 0);
        free.push_back(felt > 0 ? 0 : 1);
    }
}

/// A node feels nodes only, so that a long edge does not pull on its ends; a dummy feels all.
double FlatLayout::pull_on(index_t place, const places_t& neighbours, index_t& felt) const {
    const double centre = centre_of(place);
    double sum = 0;
    for (const index_t neighbour : neighbours) {
        if (is_dummy(place) || !is_dummy(neighbour)) {
            sum += centre_of(neighbour) - centre;
            ++felt;
        }
    }
    return sum;
}

/// Places that push against each other move together, by the mean of their forces; where the force
/// rises, they part.
void FlatLayout::settle(const Stretch& stretch) {
    double lower = stretch.lower;
    double previous = DBL_MAX;
    double sum = 0;
    int count = 0;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < forces.size(); ++i) {
        if (free[i] != 0) {
            continue;
        }
        if (forces[i] > previous) {
            lower = y[stretch.first[i]] + move(stretch, begin, i, sum / count, lower);
            begin = i;
            sum = 0;
            count = 0;
        }
        previous = forces[i];
        sum += forces[i];
        ++count;
    }
    if (count > 0) {
        move(stretch, begin, forces.size(), sum / count, lower);
    }
}

/// Moves part of a stretch, but not above `lower`; gives how far.
double FlatLayout::move(const Stretch& stretch, std::size_t begin, std::size_t end, double shift,
                        double lower) {
    const double top = y[stretch.first[begin]];
    std::size_t from = begin;
    if (lower > top + shift) {
        shift = lower - top;
        if (top + shift < lower) {
            from = 0; // rounding left it short of the bound: all above moves along
        }
    }
    for (std::size_t i = from; i < end; ++i) {
        y[stretch.first[i]] += shift;
    }
    return shift;
}

/// The upper bound wins over the lower.
void FlatLayout::hold_upper_bound(const Stretch& stretch) {
    double upper = stretch.upper;
    for (const index_t* place = stretch.last; place != stretch.first;) {
        --place;
        const double gap = gap_at(*place);
        const double bottom = y[*place] + room_of(*place) + gap / 2;
        if (bottom <= upper) {
            return;
        }
        y[*place] -= bottom - upper;
        upper = y[*place] - gap / 2;
    }
}

} // namespace limit
