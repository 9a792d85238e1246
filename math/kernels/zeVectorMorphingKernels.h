#pragma once

#include "math/ZEMathExport.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

/// Morphing: for each of `count` vectors, destination = base[i] +
/// targets[0][i] * weights[0] + targets[1][i] * weights[1] + ..., added in
/// target order. Every weight is applied, zero and negative ones too. Base and
/// targets are tightly packed; outputs are `destinationStride` bytes apart and
/// the bytes between them are not touched. The destination may be the base.
ZEMATH_API void morphNonAligned(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                                unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride);

}  // namespace Math
}  // namespace Lux
