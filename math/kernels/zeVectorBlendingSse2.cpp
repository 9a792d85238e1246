// The SSE2 skinning path: four vertices per vector.

#include <emmintrin.h>

#include "math/kernels/impl/BlendLoop.h"
#include "math/kernels/impl/BlendRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Sse2 {
  typedef __m128 F;
  static constexpr int N = 4;
  static F zero() { return _mm_setzero_ps(); }
  static F set1(float v) { return _mm_set1_ps(v); }
  static F load(const float* p) { return _mm_loadu_ps(p); }
  static F add(F a, F b) { return _mm_add_ps(a, b); }
  static F mul(F a, F b) { return _mm_mul_ps(a, b); }
  // Ordered: a NaN weight is not greater.
  static F greater(F a, F b) { return _mm_cmpgt_ps(a, b); }
  static F select(F mask, F a, F b) { return _mm_or_ps(_mm_and_ps(mask, a), _mm_andnot_ps(mask, b)); }
  static F unpacklo(F a, F b) { return _mm_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm_shuffle_ps(a, b, kImm);
  }
  // Group g: the four floats of lane g.
  static F loadGroup(const float* const* p, int g) { return _mm_loadu_ps(p[g]); }
  static void storeGroups(const F r[4], float (*lanes)[4]) {
    for (int g = 0; g < 4; ++g) _mm_storeu_ps(lanes[g], r[g]);
  }
};

}  // namespace

void blendRawSse2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  blendLoop<Sse2, false>(source, count, weights, indices, weightsPerVertex, matrices, out, stride);
}

void blendOneWeightRawSse2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride) {
  blendLoop<Sse2, true>(source, count, nullptr, indices, weightsPerVertex, matrices, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
