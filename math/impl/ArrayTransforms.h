#pragma once

/// \file
/// The matrix array transforms, out of line: the members transformVectors and
/// transformPoints of both matrix classes call these. Each runs on the widest
/// instruction set this processor has and gives the bits of the scalar loop,
/// element by element in the written order. src may be dst; arrays that
/// overlap with a shift get the scalar loop.

#include "math/ZEMathExport.h"

namespace Lux {
namespace Math {

class zeMatrix44f;
class zeMatrix44d;
class zeVec3f;
class zeVec4f;
class zeVec3d;
class zeVec4d;

namespace impl {

/// dst[i] = src[i] transformed as a direction by the 3x3 block of m.
ZEMATH_API void transformVectorArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst,
                                     unsigned int count) noexcept;
/// dst[i] = src[i] transformed as a point by m with the projective divide.
ZEMATH_API void transformPointArray(const zeMatrix44f& m, const zeVec3f* src, zeVec3f* dst,
                                    unsigned int count) noexcept;
/// dst[i] = x, y, z of src[i] by the 3x3 block of m, w copied.
ZEMATH_API void transformVectorArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst,
                                     unsigned int count) noexcept;
/// dst[i] = src[i] times m in full, no divide.
ZEMATH_API void transformPointArray(const zeMatrix44f& m, const zeVec4f* src, zeVec4f* dst,
                                    unsigned int count) noexcept;
/// dst[i] = src[i] transformed as a direction by the 3x3 block of m.
ZEMATH_API void transformVectorArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst,
                                     unsigned int count) noexcept;
/// dst[i] = src[i] transformed as a point by m with the projective divide.
ZEMATH_API void transformPointArray(const zeMatrix44d& m, const zeVec3d* src, zeVec3d* dst,
                                    unsigned int count) noexcept;
/// dst[i] = x, y, z of src[i] by the 3x3 block of m, w copied.
ZEMATH_API void transformVectorArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst,
                                     unsigned int count) noexcept;
/// dst[i] = src[i] times m in full, no divide.
ZEMATH_API void transformPointArray(const zeMatrix44d& m, const zeVec4d* src, zeVec4d* dst,
                                    unsigned int count) noexcept;

}  // namespace impl
}  // namespace Math
}  // namespace Lux
