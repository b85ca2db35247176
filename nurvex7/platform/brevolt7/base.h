#pragma once

#include "nurvex7/export.h"

#include <cstddef>

namespace brevolt7 {

/// Where elements come from. An element made by an application may be deleted by its parent inside
/// the library, so both take and give memory in one place.
class NURVEX7_API CBase {
public:
    virtual ~CBase();
    static void* operator new(std::size_t bytes);
    static void operator delete(void* memory) noexcept;
};

} // namespace brevolt7
