// The AVX2 morphing path: eight vectors (24 floats) per block. This file
// alone is built for AVX2 and includes nothing of the library but the raw
// loop, so no shared inline function is ever emitted with AVX2 instructions.

#include <immintrin.h>

#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Avx2 {
  typedef __m256 F;
  static constexpr int N = 8;
  static F set1(float v) { return _mm256_set1_ps(v); }
  static F load(const float* p) { return _mm256_loadu_ps(p); }
  static void store(float* p, F v) { _mm256_storeu_ps(p, v); }
  static F add(F a, F b) { return _mm256_add_ps(a, b); }
  static F mul(F a, F b) { return _mm256_mul_ps(a, b); }
  static void stream(float* p, F v) { _mm256_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
};

}  // namespace

void morphPassAvx2(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                   const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                   unsigned int stride) {
  morphPassLoop<Avx2>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
