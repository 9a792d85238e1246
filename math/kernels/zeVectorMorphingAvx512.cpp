// The AVX-512 morphing path: sixteen vectors (48 floats) per block. This
// file alone is built for AVX-512F and includes nothing of the library but
// its lanes and the raw loop, so no shared inline function is ever emitted
// with AVX-512 instructions.

#include "math/impl/lanes/Avx512Lanes.h"
#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {

void morphPassAvx512(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                     const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                     unsigned int stride) {
  morphPassLoop<Avx512Float>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
