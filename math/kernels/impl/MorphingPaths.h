#pragma once

/// \file
/// The instruction-set paths behind the morphing kernel. Internal: the
/// published function runs the one the table chooses; the tests run them all.
/// The vector paths take outputs at least 12 bytes apart that overlay no
/// input but the base, in place; the published function gives every other
/// call to the scalar loop.

#include "math/ZEMathExport.h"
#include "math/impl/PathTable.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {
namespace impl {

/// A kernel with the arguments of morphNonAligned.
typedef void (*MorphPathFunction)(const zeVec3f* base, const zeVec3f** targets, const float* weights,
                                  unsigned int count, unsigned int targetCount, zeVec3f* destination,
                                  unsigned int destinationStride);

/// The kernel of one morphing path.
struct MorphKernels {
  MorphPathFunction function;
};

/// One morphing path: its kernel, name and instruction set.
typedef Path<MorphKernels> MorphPath;

/// The morphing paths, narrowest first (path 0 is the scalar loop), and the
/// published kernel's choice among them.
ZEMATH_API const PathTable<MorphKernels>& morphPaths() noexcept;

/// The scalar loop, in the written order; the reference for every other path.
ZEMATH_API void morphScalar(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                            unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
