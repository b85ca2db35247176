#pragma once

#include <cstddef>
#include <utility>

namespace nurvex7 {

/// Calls `f(i)` for i from 0 to before count, and for each i long before that `asks(i)`, one after
/// the other some steps apart.
///
/// A walk over what lies all over the memory spends most of its time waiting. The asks prefetch:
/// the first what is known from the start, the next what that one leads to, so that it is there
/// when its turn comes. Order   `f` by ascending i
template <typename F, typename... Asks>
void for_each_ahead(std::size_t count, F f, Asks... asks) {
    constexpr std::size_t STEPS = 10;
    for (std::size_t turn = 0; turn < count + STEPS * sizeof...(asks); ++turn) {
        std::size_t late = 0;
        const auto take = [&](auto& step) {
            if (turn >= late && turn - late < count) {
                step(turn - late);
            }
            late += STEPS;
        };
        (take(asks), ...);
        take(f);
    }
}

/// Asks for the line of memory that something begins in. Null is nothing.
inline void prefetch_line(const void* at) {
    __builtin_prefetch(at);
}

/// Asks for that line and the one behind it. Null is nothing.
inline void prefetch(const void* at) {
    if (at != nullptr) {
        prefetch_line(at);
        prefetch_line(static_cast<const char*>(at) + 64);
    }
}

/// Asks for every line of a piece of memory. Null is nothing.
inline void prefetch(const void* at, std::size_t size) {
    constexpr std::size_t LINE = 64;
    if (at != nullptr) {
        for (std::size_t offset = 0; offset < size; offset += LINE) {
            prefetch_line(static_cast<const char*>(at) + offset);
        }
    }
}

} // namespace nurvex7
