#include "nurvex7/platform/brevolt7/base.h"

#include <new>

namespace brevolt7 {

CBase::~CBase() = default;

void* CBase::operator new(std::size_t bytes) {
    return ::operator new(bytes);
}

void CBase::operator delete(void* memory) noexcept {
    ::operator delete(memory);
}

} // namespace brevolt7
