#pragma once

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
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
        came_again = came_again || find(node) >= 0;
        impl->place = static_cast<std::int32_t>(numbered.size());
        numbered.push_back(impl);
        return impl->place;
    }

    /// The number of a node, -1 where it has none.
    int find(const Node& node) const { return find(node.get_impl().get()); }
    int find(const INodeImpl* impl) const {
        const auto place = static_cast<std::size_t>(impl->place);
        return place < numbered.size() && numbered[place] == impl ? impl->place : -1;
    }

    /// Calls `f(place, record)` for the records that the first `count` nodes have. Few nodes, and
    /// those of which some have several places, are looked up one by one; for many the records are
    /// walked as they lie in memory.
    ///
    /// Order   undefined
    template <typename Map, typename F>
    void for_each_record(Map& records, std::size_t count, F f) const {
        if (came_again || records.size() > 4 * count) {
            for (std::size_t place = 0; place < count; ++place) {
                if (auto* const entry = records.find(numbered[place]->get_id())) {
                    f(place, entry->second);
                }
            }
            return;
        }
        using entry_t = std::remove_reference_t<decltype(*records.find(0))>;
        std::vector<entry_t*> entries;
        entries.reserve(records.size());
        records.for_each_unordered([&](int, entry_t& entry) { entries.push_back(&entry); });
        const auto take = [&](std::size_t i) {
            const int place = find(entries[i]->first);
            if (place >= 0 && static_cast<std::size_t>(place) < count) {
                f(static_cast<std::size_t>(place), entries[i]->second);
            }
        };
        for_each_ahead(
            entries.size(), take,
            [&](std::size_t i) { prefetch_line(entries[i]->first.get_impl().get()); },
            [&](std::size_t i) {
                entries[i]->second.for_each_neighbour(
                    [](const NodeEdgePair& p) { prefetch_line(p.node.get_impl().get()); });
            });
    }

private:
    std::vector<const INodeImpl*> numbered;
    bool came_again = false; ///< some node has more than one number
};

/// Where a walk will find the place of a node; only for a prefetch.
inline const void* place_address(const INodeImpl& node) {
    if (node.run != nullptr) {
        return node.run->address_of_place(static_cast<const DummyNodeImpl&>(node));
    }
    return node.known_vis;
}

/// Calls `f(node)` for the nodes of a level in their order, and asks long before for each node and
/// its place, and for the run and the edge of a dummy node.
template <typename Level, typename F>
void for_each_on_level(Level& level, F f) {
    const auto run_of = [&](std::size_t i) { return level[i].get_impl()->run; };
    for_each_ahead(
        level.size(), [&](std::size_t i) { f(level[i]); },
        [&](std::size_t i) { prefetch_line(level[i].get_impl().get()); },
        [&](std::size_t i) {
            prefetch_line(place_address(*level[i].get_impl()));
            prefetch_line(run_of(i));
        },
        [&](std::size_t i) {
            if (run_of(i) != nullptr) {
                prefetch_line(run_of(i)->get_edge().get());
            }
        });
}

/// Lists of things, one list for each place, in one piece of memory.
template <typename T>
class PlacedLists {
public:
    /// Puts a thing into the list of a place, behind what it has.
    void add(std::size_t place, const T& thing) { added.push_back({place, thing}); }

    /// Ends the adding: the lists can be read from here on.
    void close(std::size_t places) {
        start.assign(places + 1, 0);
        for (const Added& entry : added) {
            ++start[entry.place + 1];
        }
        for (std::size_t p = 1; p < start.size(); ++p) {
            start[p] += start[p - 1];
        }
        std::vector<std::size_t> next(start);
        things.resize(added.size());
        for (const Added& entry : added) {
            things[next[entry.place]++] = entry.thing;
        }
        std::vector<Added>().swap(added);
    }

    std::span<const T> of(std::size_t place) const {
        return std::span(things).subspan(start[place], start[place + 1] - start[place]);
    }

private:
    struct Added {
        std::size_t place;
        T thing;
    };

    std::vector<Added> added;
    std::vector<std::size_t> start;
    std::vector<T> things;
};

} // namespace nurvex7
