#pragma once

/// \file
/// The library's own sine, cosine, tangent and their inverses, whose results
/// are the same bits on every x86-64 processor and with every C library: plain
/// double arithmetic in a fixed order, no fused multiply-add, no long double,
/// nothing of the C library but the correctly rounded sqrt. Each is within
/// 1 ulp of the exact result (float: evaluated in double and rounded once).
/// Special values follow the C library: sin(+-0) = +-0, sin(inf) = NaN,
/// asin(x) = NaN for |x| > 1, atan2's signed zeros and infinities, NaN in
/// gives NaN out.
///
/// They are always part of the library. Its own operations (rotations,
/// Euler angles, slerp, projections, decomposition) call them instead of the
/// C library's functions when it is built with ZEMATH_PORTABLE_TRIG=ON.

#include "math/ZEMathExport.h"

namespace Lux {
namespace Math {

/// The sine of x (radians).
ZEMATH_API double zePortableSin(double x) noexcept;
/// The sine of x (radians).
ZEMATH_API float zePortableSin(float x) noexcept;
/// The cosine of x (radians).
ZEMATH_API double zePortableCos(double x) noexcept;
/// The cosine of x (radians).
ZEMATH_API float zePortableCos(float x) noexcept;
/// s = the sine and c = the cosine of x from one reduction: the same bits as
/// zePortableSin(x) and zePortableCos(x).
ZEMATH_API void zePortableSinCos(double x, double& s, double& c) noexcept;
/// s = the sine and c = the cosine of x from one reduction: the same bits as
/// zePortableSin(x) and zePortableCos(x).
ZEMATH_API void zePortableSinCos(float x, float& s, float& c) noexcept;
/// The tangent of x (radians).
ZEMATH_API double zePortableTan(double x) noexcept;
/// The tangent of x (radians).
ZEMATH_API float zePortableTan(float x) noexcept;
/// The arcsine of x in [-pi/2, pi/2]; NaN for |x| > 1.
ZEMATH_API double zePortableAsin(double x) noexcept;
/// The arcsine of x in [-pi/2, pi/2]; NaN for |x| > 1.
ZEMATH_API float zePortableAsin(float x) noexcept;
/// The arccosine of x in [0, pi]; NaN for |x| > 1.
ZEMATH_API double zePortableAcos(double x) noexcept;
/// The arccosine of x in [0, pi]; NaN for |x| > 1.
ZEMATH_API float zePortableAcos(float x) noexcept;
/// The arctangent of x in [-pi/2, pi/2].
ZEMATH_API double zePortableAtan(double x) noexcept;
/// The arctangent of x in [-pi/2, pi/2].
ZEMATH_API float zePortableAtan(float x) noexcept;
/// The angle of the point (x, y) in [-pi, pi], signed like y.
ZEMATH_API double zePortableAtan2(double y, double x) noexcept;
/// The angle of the point (x, y) in [-pi, pi], signed like y.
ZEMATH_API float zePortableAtan2(float y, float x) noexcept;

}  // namespace Math
}  // namespace Lux
