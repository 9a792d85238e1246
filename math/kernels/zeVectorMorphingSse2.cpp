// The SSE2 morphing path: four vectors (twelve floats) per block.

#include "math/impl/lanes/Sse2Lanes.h"
#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {

void morphPassSse2(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                   const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                   unsigned int stride) {
  morphPassLoop<Sse2Float>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
