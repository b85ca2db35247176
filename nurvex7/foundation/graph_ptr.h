#pragma once

#include "nurvex7/foundation/countable.h"

#include <type_traits>
#include <utility>

namespace nurvex7 {

/// Counted pointer to an object that derives from Countable; the count lives in the object.
///
/// Duty    one thread at a time for all handles of one graph: counts are plain integers. A null
///         handle must not be dereferenced.
template <typename T>
class graph_ptr {
public:
    graph_ptr() = default;
    graph_ptr(T* object) : target(object) { take(); }
    graph_ptr(const graph_ptr& other) : target(other.target) { take(); }
    graph_ptr(graph_ptr&& other) noexcept : target(std::exchange(other.target, nullptr)) {}

    /// From a handle on a derived class.
    template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    graph_ptr(const graph_ptr<U>& other) : target(other.get()) {
        take();
    }

    ~graph_ptr() { release(); }

    graph_ptr& operator=(const graph_ptr& other) {
        if (target != other.target) {
            graph_ptr old(std::move(*this));
            target = other.target;
            take();
        }
        return *this;
    }

    graph_ptr& operator=(graph_ptr&& other) noexcept {
        if (this != &other) {
            graph_ptr old(std::move(*this));
            target = std::exchange(other.target, nullptr);
        }
        return *this;
    }

    /// Releases the object; the handle is null afterwards.
    void reset() { release(); }

    T* get() const { return target; }
    T& operator*() const { return *target; }
    T* operator->() const { return target; }

private:
    void take() {
        if (target != nullptr) {
            ++target->ref_count;
        }
    }

    void release() {
        T* const gone = std::exchange(target, nullptr);
        if (gone != nullptr && --gone->ref_count == 0) {
            destroy(gone);
        }
    }

    // Out of line: releasing is everywhere, dying is rare. It also keeps the compiler from taking
    // a release behind a release for a use after the end.
    [[gnu::noinline]] static void destroy(T* gone) { delete gone; }

    T* target = nullptr;
};

} // namespace nurvex7
