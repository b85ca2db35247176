#include "nurvex7/platform/corvane2/mutex.h"

namespace corvane2::threading {

mutex_t::mutex_t() = default;

mutex_t::~mutex_t() = default;

void mutex_t::acquire() {
    native.lock();
}

void mutex_t::release() {
    native.unlock();
}

} // namespace corvane2::threading
