#pragma once

/// Marks what leaves the shared library. Everything else is hidden: what an application derives
/// from or converts to needs one vtable and one typeinfo on both sides of the library's wall.
#if defined(NURVEX7_STATIC)
#define NURVEX7_API
#else
#define NURVEX7_API __attribute__((visibility("default")))
#endif
