#pragma once

#include "nurvex7/export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nurvex7 {

/// Which slots of a vector still hold an item, counted so that the item at a place is found without
/// walking: a Fenwick tree (Fenwick 1994) over words of 64 slots.
class NURVEX7_API gap_index {
public:
    /// The slots from `first` to before `last` hold items, those before `first` are gaps.
    gap_index(std::size_t first, std::size_t last);

    std::size_t get_count() const { return count; }
    std::size_t get_slot_count() const { return slots; }
    bool holds(std::size_t slot) const { return ((words[slot / 64] >> (slot % 64)) & 1U) != 0; }
    /// The slot of the item at a place among those that are left. Duty: place < get_count()
    std::size_t slot_at(std::size_t place) const;
    /// Makes a gap. Duty: the slot holds an item
    void drop(std::size_t slot);

private:
    std::vector<std::uint64_t> words;
    std::vector<std::uint32_t> tree; ///< from 1: items in the words that the place stands for
    std::size_t count;
    std::size_t slots;
};

} // namespace nurvex7
