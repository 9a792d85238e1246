// The AVX-512 morphing path: sixteen vectors (48 floats) per block. This
// file alone is built for AVX-512F and includes nothing of the library but
// the raw loop, so no shared inline function is ever emitted with AVX-512
// instructions.

#include <immintrin.h>

#include "math/kernels/impl/MorphLoop.h"
#include "math/kernels/impl/MorphRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Avx512 {
  typedef __m512 F;
  static constexpr int N = 16;
  static F set1(float v) { return _mm512_set1_ps(v); }
  static F load(const float* p) { return _mm512_loadu_ps(p); }
  static void store(float* p, F v) { _mm512_storeu_ps(p, v); }
  static F add(F a, F b) { return _mm512_add_ps(a, b); }
  static F mul(F a, F b) { return _mm512_mul_ps(a, b); }
  static void stream(float* p, F v) { _mm512_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
};

}  // namespace

void morphPassAvx512(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                     const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                     unsigned int stride) {
  morphPassLoop<Avx512>(from, fromStride, targets, weights, targetCount, count, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
