#pragma once

#include "nurvex7/foundation/countable.h"
#include "nurvex7/foundation/graph_ptr.h"

#include <algorithm>
#include <cstddef>
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
/// Owners of a set append with `push_back` and remove with erase_found. Removal at the front is
/// cheap: tearing down a graph takes the sets apart from the front.
template <typename T>
class GraphSet : public IGraphSet<T> {
public:
    int GetCount() const override { return static_cast<int>(items.size() - front); }
    T GetItem(int index) override { return items[front + static_cast<std::size_t>(index)]; }

    /// The place of x in ascending order, sorting the set first where it is not sorted.
    ///
    /// Deliberate: a stranger answers with its next higher neighbour, or End() where none is
    /// higher, and not with End() alone. Removal leans on it.
    typename IGraphSet<T>::Iterator Find(const T& x) {
        sort();
        const auto found = std::lower_bound(begin(), end(), x);
        return typename IGraphSet<T>::Iterator(static_cast<int>(found - begin()), this);
    }

    bool empty() const { return front == items.size(); }
    bool is_sorted() const { return sorted; }
    void mark_sorted() { sorted = true; }
    void mark_unsorted() { sorted = false; }
    void reserve(std::size_t count) { items.reserve(front + count); }

    void push_back(const T& item) {
        items.push_back(item);
        sorted = false;
    }

    void clear() {
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
    void drop_repeated() { items.erase(std::unique(begin(), end()), end()); }

    /// Removes the item at a place and closes the gap.
    void erase_at(int index) {
        const auto place = begin() + index;
        if (place - begin() <= end() - place) {
            std::move_backward(begin(), place, place + 1);
            items[front] = T();
            ++front;
        } else {
            std::move(place + 1, end(), place);
            items.pop_back();
        }
        if (front == items.size()) {
            clear();
        }
    }

    typename std::vector<T>::iterator begin() {
        return items.begin() + static_cast<std::ptrdiff_t>(front);
    }
    typename std::vector<T>::iterator end() { return items.end(); }

    T& operator[](int index) { return items[front + static_cast<std::size_t>(index)]; }

    /// Gives all items away and leaves the set empty; the mark of order stays.
    std::vector<T> take_items() {
        std::vector<T> given(std::make_move_iterator(begin()), std::make_move_iterator(end()));
        clear();
        return given;
    }

protected:
    std::vector<T> items;
    std::size_t front = 0; ///< slots before it are spent
    bool sorted = false;
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
