#pragma once

#include "nurvex7/model/node.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Numbers nodes 0, 1, 2, ... for the arrays of one phase.
///
/// The number is noted on the node itself and found without a search. Somebody else may overwrite
/// the note, so it counts only where the list leads back to the node (Briggs and Torczon, "An
/// efficient representation for sparse sets", 1993).
///
/// Duty    the nodes outlive the numbers. While these are in use nobody else numbers the same nodes
class NodePlaces {
public:
    void reserve(std::size_t count) { numbered.reserve(count); }

    /// The next number, also for a node that has one already: the new one counts from then on.
    int enter(const Node& node) {
        const INodeImpl* const impl = node.get_impl().get();
        impl->place = static_cast<std::int32_t>(numbered.size());
        numbered.push_back(impl);
        return impl->place;
    }

    /// The number of a node, -1 where it has none.
    int find(const Node& node) const {
        const INodeImpl* const impl = node.get_impl().get();
        const auto place = static_cast<std::size_t>(impl->place);
        return place < numbered.size() && numbered[place] == impl ? impl->place : -1;
    }

private:
    std::vector<const INodeImpl*> numbered;
};

} // namespace nurvex7
