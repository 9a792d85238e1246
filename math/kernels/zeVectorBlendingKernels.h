#pragma once

#include "math/ZEMathExport.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3f.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {

/// The weight an influence must exceed (strictly) to count in
/// indexedBlendAligned4Vectors: the float nearest 0.0001 (bits 0x38D1B717).
constexpr float zeBlendWeightThreshold = 0.0001f;

/// Skinning: for each of `count` vertices, destination = the sum over its
/// `weightsPerVertex` influences of (x, y, z, 1)·matrices[index] * weight,
/// taking weights and indices in step from their arrays. Influences whose
/// weight is not above zeBlendWeightThreshold (NaN included) are skipped
/// without reading their matrix; the weights are not normalised. Only x, y, z
/// of each source vertex are read. Outputs are `destinationStride` bytes
/// apart; the bytes between them are not touched.
ZEMATH_API void indexedBlendAligned4Vectors(const zeVec4f* source, unsigned int count, const float* weights,
                                            const unsigned char* indices, unsigned int weightsPerVertex,
                                            const zeMatrix44f* matrices, zeVec3f* destination,
                                            unsigned int destinationStride);

/// Single-influence skinning: destination = (x, y, z, 1)·matrices[first index
/// of the vertex], the first index of vertex i being indices[i *
/// weightsPerVertex]. The weights are not read. Outputs as above.
ZEMATH_API void indexedBlendAligned4VectorsOneWeight(const zeVec4f* source, unsigned int count, const float* weights,
                                                     const unsigned char* indices, unsigned int weightsPerVertex,
                                                     const zeMatrix44f* matrices, zeVec3f* destination,
                                                     unsigned int destinationStride);

}  // namespace Math
}  // namespace Lux
