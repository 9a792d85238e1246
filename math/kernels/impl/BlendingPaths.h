#pragma once

/// \file
/// The instruction-set paths behind the skinning kernels. Internal: the
/// published functions run the one the table chooses; the tests run them all.

#include "math/ZEMathExport.h"
#include "math/impl/PathTable.h"
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

/// The kernels of one skinning path.
struct BlendKernels {
  BlendPathFunction weighted;
  BlendPathFunction oneWeight;
};

/// One skinning path: its kernels, name and instruction set.
typedef Path<BlendKernels> BlendPath;

/// The skinning paths, narrowest first (path 0 is the scalar loop), and the
/// published kernels' choice among them.
ZEMATH_API const PathTable<BlendKernels>& blendPaths() noexcept;

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
