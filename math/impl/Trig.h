#pragma once

/// \file
/// The one way the library's operations reach the sine, cosine, tangent and
/// their inverses: the C library's functions, or, in a library built with
/// ZEMATH_PORTABLE_TRIG, its own CPU-independent ones
/// (math/portable/zePortableTrig.h). Inline code of the public headers calls
/// these too, and math/zeMathConfig.h, written when the library was built,
/// makes a program's copy of that code choose as the library did. Float
/// arguments get the float functions, double arguments the double ones.

#include <cmath>

#include "math/portable/zePortableTrig.h"
#include "math/zeMathConfig.h"

namespace Lux {
namespace Math {
namespace impl {

#if ZEMATH_PORTABLE_TRIG

/// sin x.
inline float sin(float x) noexcept { return zePortableSin(x); }
/// sin x.
inline double sin(double x) noexcept { return zePortableSin(x); }
/// cos x.
inline float cos(float x) noexcept { return zePortableCos(x); }
/// cos x.
inline double cos(double x) noexcept { return zePortableCos(x); }
/// s = sin(angle), c = cos(angle) from one call, the same bits as sin and cos.
inline void sinCos(float angle, float& s, float& c) noexcept { zePortableSinCos(angle, s, c); }
/// s = sin(angle), c = cos(angle) from one call, the same bits as sin and cos.
inline void sinCos(double angle, double& s, double& c) noexcept { zePortableSinCos(angle, s, c); }
/// tan x.
inline float tan(float x) noexcept { return zePortableTan(x); }
/// tan x.
inline double tan(double x) noexcept { return zePortableTan(x); }
/// asin x.
inline float asin(float x) noexcept { return zePortableAsin(x); }
/// asin x.
inline double asin(double x) noexcept { return zePortableAsin(x); }
/// acos x.
inline float acos(float x) noexcept { return zePortableAcos(x); }
/// acos x.
inline double acos(double x) noexcept { return zePortableAcos(x); }
/// atan x.
inline float atan(float x) noexcept { return zePortableAtan(x); }
/// atan x.
inline double atan(double x) noexcept { return zePortableAtan(x); }
/// atan2(y, x).
inline float atan2(float y, float x) noexcept { return zePortableAtan2(y, x); }
/// atan2(y, x).
inline double atan2(double y, double x) noexcept { return zePortableAtan2(y, x); }

#else

/// sin x.
inline float sin(float x) noexcept { return std::sin(x); }
/// sin x.
inline double sin(double x) noexcept { return std::sin(x); }
/// cos x.
inline float cos(float x) noexcept { return std::cos(x); }
/// cos x.
inline double cos(double x) noexcept { return std::cos(x); }
/// s = sin(angle), c = cos(angle) from one combined call.
inline void sinCos(float angle, float& s, float& c) noexcept { ::sincosf(angle, &s, &c); }
/// s = sin(angle), c = cos(angle) from one combined call.
inline void sinCos(double angle, double& s, double& c) noexcept { ::sincos(angle, &s, &c); }
/// tan x.
inline float tan(float x) noexcept { return std::tan(x); }
/// tan x.
inline double tan(double x) noexcept { return std::tan(x); }
/// asin x.
inline float asin(float x) noexcept { return std::asin(x); }
/// asin x.
inline double asin(double x) noexcept { return std::asin(x); }
/// acos x.
inline float acos(float x) noexcept { return std::acos(x); }
/// acos x.
inline double acos(double x) noexcept { return std::acos(x); }
/// atan x.
inline float atan(float x) noexcept { return std::atan(x); }
/// atan x.
inline double atan(double x) noexcept { return std::atan(x); }
/// atan2(y, x).
inline float atan2(float y, float x) noexcept { return std::atan2(y, x); }
/// atan2(y, x).
inline double atan2(double y, double x) noexcept { return std::atan2(y, x); }

#endif

}  // namespace impl
}  // namespace Math
}  // namespace Lux
