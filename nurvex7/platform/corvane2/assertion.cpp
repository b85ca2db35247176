#include "nurvex7/platform/corvane2/assertion.h"

#include <cstdio>
#include <utility>

namespace corvane2 {

namespace {
void _write_line(const char* expression, const char* path, int line, const char* function) {
    std::fprintf(stderr, "assertion failed: %s, %s:%d, %s\n", expression, path, line, function);
}

assertion_handler_t current_handler = &_write_line;
} // namespace

void assertion_failed(const char* expression, const char* path, int line, const char* function) {
    current_handler(expression, path, line, function);
}

assertion_handler_t set_assertion_handler(assertion_handler_t handler) {
    return std::exchange(current_handler, handler != nullptr ? handler : &_write_line);
}

} // namespace corvane2
