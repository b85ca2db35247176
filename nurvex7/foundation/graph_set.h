#pragma once

#include "nurvex7/foundation/countable.h"
#include "nurvex7/foundation/gap_index.h"
#include "nurvex7/foundation/graph_ptr.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace nurvex7 {

/// A read-only indexed set of nodes, edges or pairs: what the model hands around.
///
/// Order   that of the set; a set that is searched sorts itself (see GraphSet::Find)
/// Duty    an index lies in 0 to GetCount() - 1; an iterator at End() is not dereferenced
template <typename T>
class IGraphSet : public Countable {
public:
    ~IGraphSet() override = default;
    virtual int GetCount() const = 0;
    virtual T GetItem(int index) = 0;

    /// A place in a set. Start a walk at `Iterator(0, &set)`.
    class Iterator {
    public:
        Iterator(int at, IGraphSet* of) : index(at), set(of) {}

        bool operator==(const Iterator& other) const {
            return set == other.set && index == other.index;
        }
        bool operator!=(const Iterator& other) const { return !(*this == other); }
        T operator*() const { return set->GetItem(index); }

        /// Holds the item for the length of the expression: items come by value.
        struct Arrow {
            T item;
            T* operator->() { return &item; }
        };
        Arrow operator->() const { return Arrow{set->GetItem(index)}; }
        void operator++(int) { ++index; }

        int index;

    private:
        IGraphSet* set;
    };

    Iterator End() { return Iterator(GetCount(), this); }
};

/// The set in memory: filled in any order, sorted by its first search.
///
/// Owners of a set append with `push_back` and remove with erase_found. A removal near either end
/// closes its gap at once; one in the midst of many items leaves the gap open until enough of them
/// have gathered, or until somebody walks the set. So the items go one by one, in any order, at
/// little more than a search each.
template <typename T>
class GraphSet : public IGraphSet<T> {
public:
    GraphSet() = default;
    GraphSet(const GraphSet& other)
        : IGraphSet<T>(other), front(other.front), looks(other.looks), sorted(other.sorted),
          items(other.items),
          gaps(other.gaps != nullptr ? std::make_unique<gap_index>(*other.gaps) : nullptr) {}
    GraphSet(GraphSet&& other) noexcept { swap(other); }
    GraphSet& operator=(GraphSet other) noexcept {
        swap(other);
        return *this;
    }
    ~GraphSet() override = default;

    void swap(GraphSet& other) noexcept {
        std::swap(front, other.front);
        std::swap(looks, other.looks);
        items.swap(other.items);
        gaps.swap(other.gaps);
        std::swap(sorted, other.sorted);
    }

    int GetCount() const override {
        return static_cast<int>(gaps != nullptr ? gaps->get_count() : items.size() - front);
    }
    T GetItem(int index) override {
        if (gaps != nullptr) {
            count_look();
        }
        return item_at(index);
    }

    /// The place of x in ascending order, sorting the set first where it is not sorted.
    ///
    /// Deliberate: a stranger answers with its next higher neighbour, or End() where none is
    /// higher, and not with End() alone. Removal leans on it.
    typename IGraphSet<T>::Iterator Find(const T& x) {
        sort();
        int low = 0;
        for (int high = GetCount(); low < high;) {
            const int middle = low + (high - low) / 2;
            if (item_at(middle) < x) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return typename IGraphSet<T>::Iterator(low, this);
    }

    bool empty() const { return GetCount() == 0; }
    bool is_sorted() const { return sorted; }
    void mark_sorted() { sorted = true; }
    void mark_unsorted() { sorted = false; }
    void reserve(std::size_t count) {
        close_gaps();
        items.reserve(front + count);
    }

    void push_back(const T& item) {
        close_gaps();
        items.push_back(item);
        sorted = false;
    }

    void clear() {
        gaps.reset();
        items.clear();
        front = 0;
    }

    /// Ascending order of the items, kept until the next append.
    void sort() {
        if (!sorted) {
            std::sort(begin(), end());
            sorted = true;
        }
    }

    /// Drops each item that equals the one before it.
    void drop_repeated() {
        close_gaps();
        items.erase(std::unique(begin(), end()), end());
    }

    /// Removes the item at a place.
    void erase_at(int index) {
        const int behind = GetCount() - 1 - index;
        if (gaps != nullptr || std::min(index, behind) > MOVED_AT_ONCE) {
            leave_gap(index);
        } else if (index <= behind) {
            std::move_backward(begin(), begin() + index, begin() + index + 1);
            items[front] = T();
            ++front;
        } else {
            std::move(begin() + index + 1, end(), begin() + index);
            items.pop_back();
        }
        if (empty()) {
            clear();
        }
    }

    typename std::vector<T>::iterator begin() {
        close_gaps();
        return items.begin() + static_cast<std::ptrdiff_t>(front);
    }
    typename std::vector<T>::iterator end() {
        close_gaps();
        return items.end();
    }

    T& operator[](int index) { return item_at(index); }

    /// Gives all items away and leaves the set empty; the mark of order stays.
    std::vector<T> take_items() {
        std::vector<T> given(std::make_move_iterator(begin()), std::make_move_iterator(end()));
        clear();
        return given;
    }

private:
    static constexpr int MOVED_AT_ONCE = 256; ///< items that a removal moves without thinking
    static constexpr std::size_t WALK_SHARE = 16;

    T& item_at(int index) {
        const auto place = static_cast<std::size_t>(index);
        return items[gaps != nullptr ? gaps->slot_at(place) : front + place];
    }

    void leave_gap(int index) {
        if (gaps == nullptr) {
            gaps = std::make_unique<gap_index>(front, items.size());
            looks = 0;
        }
        const std::size_t slot = gaps->slot_at(static_cast<std::size_t>(index));
        gaps->drop(slot);
        items[slot] = T();
        if (gaps->get_count() * 2 < gaps->get_slot_count()) {
            close_gaps();
        }
    }

    // A look past gaps costs a search. A walk makes many, and then closing the gaps is cheaper.
    void count_look() {
        if (++looks > gaps->get_slot_count() / WALK_SHARE) {
            close_gaps();
        }
    }

    void close_gaps() {
        if (gaps == nullptr) {
            return;
        }
        std::vector<T> left;
        left.reserve(gaps->get_count());
        for (std::size_t slot = 0; slot < items.size(); ++slot) {
            if (gaps->holds(slot)) {
                left.push_back(std::move(items[slot]));
            }
        }
        items = std::move(left);
        front = 0;
        gaps.reset();
    }

    std::uint32_t front = 0; ///< slots before it are spent
    std::uint32_t looks = 0; ///< since the gaps were opened
    bool sorted = false;
    std::vector<T> items;
    std::unique_ptr<gap_index> gaps; ///< null while the items stand side by side
};

/// Removes x as every owner of a set does.
///
/// Deliberate: an x that is not in the set takes a neighbour with it, the next higher item or the
/// last one. An empty set stays as it is, unsorted mark included.
template <typename T>
void erase_found(GraphSet<T>& set, const T& x) {
    if (set.empty()) {
        return;
    }
    const int index = set.Find(x).index;
    set.erase_at(index < set.GetCount() ? index : set.GetCount() - 1);
}

} // namespace nurvex7
