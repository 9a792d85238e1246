#pragma once

/// Marks a declaration of the math library as part of its exported interface.
/// Everything else in libZEMath.so is hidden.
#if defined(__GNUC__)
#define ZEMATH_API __attribute__((visibility("default")))
#else
#define ZEMATH_API
#endif
