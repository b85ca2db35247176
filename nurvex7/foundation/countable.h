#pragma once

#include "nurvex7/export.h"

#include <cstdint>

namespace nurvex7 {

/// Base of every object that a graph_ptr counts. The count starts at 0: being made is not being
/// counted, being taken into a graph_ptr is.
class NURVEX7_API Countable {
public:
    Countable() = default;
    /// The count belongs to the object, never to its value: a copy starts at 0, an assignment
    /// leaves both counts alone.
    Countable(const Countable&) {}
    Countable& operator=(const Countable&) { return *this; }
    virtual ~Countable() = 0;

    mutable std::int32_t ref_count = 0;
};

/// The heap cell that the handles of one graph_ptr2 family share. Starts at 1 for the handle that
/// makes it.
class NURVEX7_API Counter final : public Countable {
public:
    Counter() { ref_count = 1; }
    ~Counter() override;
};

} // namespace nurvex7
