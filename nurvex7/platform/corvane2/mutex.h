#pragma once

#include "nurvex7/export.h"

#include <mutex>

namespace corvane2::threading {

/// A lock that its holder may take again: receivers fire, connect to and disconnect from the very
/// signal that is calling them.
class NURVEX7_API mutex_t {
public:
    mutex_t();
    ~mutex_t();
    mutex_t(const mutex_t&) = delete;
    mutex_t& operator=(const mutex_t&) = delete;

    void acquire();
    void release();

private:
    std::recursive_mutex native;
};

/// Holds a mutex for the length of a scope.
class mutex_guard_t {
public:
    explicit mutex_guard_t(mutex_t& m) : held(m) { held.acquire(); }
    ~mutex_guard_t() { held.release(); }
    mutex_guard_t(const mutex_guard_t&) = delete;
    mutex_guard_t& operator=(const mutex_guard_t&) = delete;

private:
    mutex_t& held;
};

} // namespace corvane2::threading
