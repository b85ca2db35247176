#pragma once

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// A node of a level as the sort of the level sees it.
struct Turn {
    double y;
    std::size_t at; ///< what its caller knows it by
};

/// Sorts by y. Order   those of equal y as they stood
void sort_by_y(std::vector<Turn>& turns);

} // namespace nurvex7
