#pragma once

/// \file
/// The instruction-set paths behind the skinning kernels. Internal: the
/// published functions pick one path at first use; the tests run them all.

#include "math/ZEMathExport.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {
namespace impl {

/// A kernel with the arguments of indexedBlendAligned4Vectors.
typedef void (*BlendPathFunction)(const zeVec4f* source, unsigned int count, const float* weights,
                                  const unsigned char* indices, unsigned int weightsPerVertex,
                                  const zeMatrix44f* matrices, zeVec3f* destination, unsigned int destinationStride);

/// One path: its name, whether this processor can run it, and its two kernels.
struct BlendPath {
  const char* name;
  bool available;
  BlendPathFunction weighted;
  BlendPathFunction oneWeight;
};

/// The number of paths compiled into the library; path 0 is the scalar loop.
ZEMATH_API unsigned int blendPathCount() noexcept;
/// Path `i` (below blendPathCount()).
ZEMATH_API const BlendPath& blendPath(unsigned int i) noexcept;
/// The path the published kernels use: the widest available one.
ZEMATH_API const BlendPath& selectedBlendPath() noexcept;

/// The scalar loops, in the written order; the reference for every other path.
ZEMATH_API void blendScalar(const zeVec4f* source, unsigned int count, const float* weights,
                            const unsigned char* indices, unsigned int weightsPerVertex, const zeMatrix44f* matrices,
                            zeVec3f* destination, unsigned int destinationStride);
/// The scalar single-influence loop.
ZEMATH_API void blendOneWeightScalar(const zeVec4f* source, unsigned int count, const float* weights,
                                     const unsigned char* indices, unsigned int weightsPerVertex,
                                     const zeMatrix44f* matrices, zeVec3f* destination, unsigned int destinationStride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
