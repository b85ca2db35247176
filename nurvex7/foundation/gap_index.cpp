#include "nurvex7/foundation/gap_index.h"

#include <bit>

namespace nurvex7 {

gap_index::gap_index(std::size_t first, std::size_t last)
    : words((last + 63) / 64), tree(words.size() + 1), count(last - first), slots(last) {
    for (std::size_t slot = first; slot < last; ++slot) {
        words[slot / 64] |= std::uint64_t{1} << (slot % 64);
    }
    for (std::size_t i = 1; i < tree.size(); ++i) {
        tree[i] += static_cast<std::uint32_t>(std::popcount(words[i - 1]));
        const std::size_t above = i + (i & (~i + 1));
        if (above < tree.size()) {
            tree[above] += tree[i];
        }
    }
}

std::size_t gap_index::slot_at(std::size_t place) const {
    std::size_t word = 0;
    for (std::size_t step = std::bit_floor(words.size()); step > 0; step /= 2) {
        if (word + step < tree.size() && tree[word + step] <= place) {
            word += step;
            place -= tree[word];
        }
    }
    std::uint64_t left = words[word];
    for (; place > 0; --place) {
        left &= left - 1;
    }
    return word * 64 + static_cast<std::size_t>(std::countr_zero(left));
}

void gap_index::drop(std::size_t slot) {
    words[slot / 64] &= ~(std::uint64_t{1} << (slot % 64));
    --count;
    for (std::size_t i = slot / 64 + 1; i < tree.size(); i += i & (~i + 1)) {
        --tree[i];
    }
}

} // namespace nurvex7
