#pragma once

/// \file
/// The instruction-set paths behind the morphing kernel. Internal: the
/// published function picks one path at first use; the tests run them all.
/// The vector paths take outputs at least 12 bytes apart that overlay no
/// input but the base, in place; the published function gives every other
/// call to the scalar loop.

#include "math/ZEMathExport.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {
namespace impl {

/// A kernel with the arguments of morphNonAligned.
typedef void (*MorphPathFunction)(const zeVec3f* base, const zeVec3f** targets, const float* weights,
                                  unsigned int count, unsigned int targetCount, zeVec3f* destination,
                                  unsigned int destinationStride);

/// One path: its name, whether this processor can run it, and its kernel.
struct MorphPath {
  const char* name;
  bool available;
  MorphPathFunction function;
};

/// The number of paths compiled into the library; path 0 is the scalar loop.
ZEMATH_API unsigned int morphPathCount() noexcept;
/// Path `i` (below morphPathCount()).
ZEMATH_API const MorphPath& morphPath(unsigned int i) noexcept;
/// The path the published kernel uses: the widest available one.
ZEMATH_API const MorphPath& selectedMorphPath() noexcept;

/// The scalar loop, in the written order; the reference for every other path.
ZEMATH_API void morphScalar(const zeVec3f* base, const zeVec3f** targets, const float* weights, unsigned int count,
                            unsigned int targetCount, zeVec3f* destination, unsigned int destinationStride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
