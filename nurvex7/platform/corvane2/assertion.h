#pragma once

#include "nurvex7/export.h"

namespace corvane2 {

/// What an assertion entry is told: the expression, the source path, the line and the function.
using assertion_handler_t = void (*)(const char* expression, const char* path, int line,
                                     const char* function);

/// The assertion entry of the platform. It may return: the caller then goes on as its own contract
/// says. Without a handler it writes one line to standard error.
NURVEX7_API void assertion_failed(const char* expression, const char* path, int line,
                                  const char* function);

/// Puts a handler in place of the present one and gives the old one back; null restores the line
/// on standard error.
NURVEX7_API assertion_handler_t set_assertion_handler(assertion_handler_t handler);

} // namespace corvane2
