#pragma once

#include "nurvex7/foundation/countable.h"

#include <typeinfo>

namespace nurvex7 {

/// Counted pointer for objects that cross the public border; the count lives in a cell of its own,
/// and the handle says whether the last one to go deletes the object.
///
/// Duty    T has a virtual destructor. One thread at a time.
/// Errors  converting an empty handle, or one whose object is no U, throws std::bad_cast.
template <typename T>
class graph_ptr2 {
public:
    /// An empty handle.
    graph_ptr2() = default;

    /// Takes an object. With `owns` false the object outlives the last handle: for callers who
    /// keep it themselves.
    explicit graph_ptr2(T* p, bool owns)
        : counter(p != nullptr ? new Counter : nullptr), object(p), owner(owns) {}

    graph_ptr2(const graph_ptr2& other)
        : counter(other.counter), object(other.object), owner(other.owner) {
        take();
    }

    /// The same object seen as a U: shares the count and the mark of ownership.
    template <typename U>
    operator graph_ptr2<U>() const {
        U* const converted = object != nullptr ? dynamic_cast<U*>(object) : nullptr;
        if (converted == nullptr) {
            throw std::bad_cast();
        }
        return graph_ptr2<U>(counter, converted, owner);
    }

    ~graph_ptr2() { reset(); }

    graph_ptr2& operator=(const graph_ptr2& other) {
        if (this != &other) {
            reset();
            counter = other.counter;
            object = other.object;
            owner = other.owner;
            take();
        }
        return *this;
    }

    /// Lets go of the object. The last owning handle deletes the object first and the count after
    /// it, so that what the object does while it dies still finds the count in place.
    void reset() {
        if (counter != nullptr) {
            if (owner && counter->ref_count == 1 && object != nullptr) {
                delete object;
            }
            if (--counter->ref_count == 0) {
                delete counter;
            }
        }
        object = nullptr;
        counter = nullptr;
    }

    T* get() const { return object; }
    T& operator*() const { return *object; }
    T* operator->() const { return object; }

    /// True where the last handle deletes the object.
    bool owns() const { return owner; }

    /// The count that the handles of this family share; null for an empty handle.
    const Counter* get_counter() const { return counter; }

private:
    template <typename U>
    friend class graph_ptr2;

    graph_ptr2(Counter* shared, T* p, bool owns) : counter(shared), object(p), owner(owns) {
        take();
    }

    void take() {
        if (counter != nullptr) {
            ++counter->ref_count;
        }
    }

    Counter* counter = nullptr;
    T* object = nullptr;
    bool owner = true;
};

} // namespace nurvex7
