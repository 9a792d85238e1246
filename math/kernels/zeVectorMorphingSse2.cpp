// The SSE2 morphing path: four vectors (twelve floats) per block.

#include <emmintrin.h>

#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Sse2 {
  typedef __m128 F;
  static constexpr int N = 4;
  static F set1(float v) { return _mm_set1_ps(v); }
  static F load(const float* p) { return _mm_loadu_ps(p); }
  static void store(float* p, F v) { _mm_storeu_ps(p, v); }
  static F add(F a, F b) { return _mm_add_ps(a, b); }
  static F mul(F a, F b) { return _mm_mul_ps(a, b); }
  static void stream(float* p, F v) { _mm_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
};

}  // namespace

void morphPassSse2(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                   const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                   unsigned int stride) {
  morphPassLoop<Sse2>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
