#pragma once

/// Marks a declaration of the core library as part of its exported interface.
/// Everything else in libLuxCore.so is hidden.
#if defined(__GNUC__)
#define LUXCORE_API __attribute__((visibility("default")))
#else
#define LUXCORE_API
#endif
