// The AVX2 skinning path: eight vertices per vector. This file alone is
// built for AVX2 and includes nothing of the library but the raw loop, so
// no shared inline function is ever emitted with AVX2 instructions.

#include <immintrin.h>

#include "math/kernels/impl/BlendLoop.h"
#include "math/kernels/impl/BlendRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Avx2 {
  typedef __m256 F;
  static constexpr int N = 8;
  static F zero() { return _mm256_setzero_ps(); }
  static F set1(float v) { return _mm256_set1_ps(v); }
  static F load(const float* p) { return _mm256_loadu_ps(p); }
  static F add(F a, F b) { return _mm256_add_ps(a, b); }
  static F mul(F a, F b) { return _mm256_mul_ps(a, b); }
  // Ordered and quiet: a NaN weight is not greater.
  static F greater(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_GT_OQ); }
  static F select(F mask, F a, F b) { return _mm256_blendv_ps(b, a, mask); }
  static F unpacklo(F a, F b) { return _mm256_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm256_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm256_shuffle_ps(a, b, kImm);
  }
  // Group g: lane g in the low half, lane g + 4 in the high half, so the
  // in-half transpose leaves the lanes in order.
  static F loadGroup(const float* const* p, int g) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p[g])), _mm_loadu_ps(p[g + 4]), 1);
  }
  static void storeGroups(const F r[4], float (*lanes)[4]) {
    for (int g = 0; g < 4; ++g) {
      _mm_storeu_ps(lanes[g], _mm256_castps256_ps128(r[g]));
      _mm_storeu_ps(lanes[g + 4], _mm256_extractf128_ps(r[g], 1));
    }
  }
};

}  // namespace

void blendRawAvx2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride) {
  blendLoop<Avx2, false>(source, count, weights, indices, weightsPerVertex, matrices, out, stride);
}

void blendOneWeightRawAvx2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride) {
  blendLoop<Avx2, true>(source, count, nullptr, indices, weightsPerVertex, matrices, out, stride);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
