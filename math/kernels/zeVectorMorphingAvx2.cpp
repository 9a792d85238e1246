// The AVX2 morphing path: eight vectors (24 floats) per block. This file
// alone is built for AVX2 and includes nothing of the library but its lanes
// and the raw loop, so no shared inline function is ever emitted with AVX2
// instructions.

#include "math/impl/lanes/Avx2Lanes.h"
#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {

void morphPassAvx2(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                   const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                   unsigned int stride) {
  morphPassLoop<Avx2Float>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
