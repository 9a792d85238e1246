// The AVX2 array transforms: eight floats or four doubles per vector. This
// file alone is built for AVX2 and includes nothing of the library but the
// raw loops, so no shared inline function is ever emitted with AVX2
// instructions.

#include <immintrin.h>

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/ArrayTransformRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Avx2f {
  typedef float T;
  typedef __m256 F;
  typedef __m256 Mask;
  static constexpr int N = 8;
  static constexpr int kChunk = 4;
  static constexpr bool kPermutesAcross = false;
  static F load(const T* p) { return _mm256_loadu_ps(p); }
  static void store(T* p, F v) { _mm256_storeu_ps(p, v); }
  static F set1(T v) { return _mm256_set1_ps(v); }
  static F add(F a, F b) { return _mm256_add_ps(a, b); }
  static F mul(F a, F b) { return _mm256_mul_ps(a, b); }
  static F div(F a, F b) { return _mm256_div_ps(a, b); }
  static F abs(F a) { return _mm256_andnot_ps(_mm256_set1_ps(-0.0f), a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_LT_OQ); }
  static Mask equal(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_EQ_OQ); }
  static F select(Mask m, F a, F b) { return _mm256_blendv_ps(b, a, m); }
  static F unpacklo(F a, F b) { return _mm256_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm256_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm256_shuffle_ps(a, b, kImm);
  }
  static F loadChunks(const T* p, int k, int c) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(p + 4 * k)), _mm_loadu_ps(p + 4 * (c + k)), 1);
  }
  static void storeChunks(T* p, int k, int c, F v) {
    _mm_storeu_ps(p + 4 * k, _mm256_castps256_ps128(v));
    _mm_storeu_ps(p + 4 * (c + k), _mm256_extractf128_ps(v, 1));
  }
  static void loadGroups3(const T* p, F& a, F& b, F& c) {
    a = loadChunks(p, 0, 3);
    b = loadChunks(p, 1, 3);
    c = loadChunks(p, 2, 3);
  }
  static void storeGroups3(T* p, F a, F b, F c) {
    storeChunks(p, 0, 3, a);
    storeChunks(p, 1, 3, b);
    storeChunks(p, 2, 3, c);
  }
};

struct Avx2d {
  typedef double T;
  typedef __m256d F;
  typedef __m256d Mask;
  static constexpr int N = 4;
  static constexpr int kChunk = 2;
  static constexpr bool kPermutesAcross = false;
  static F load(const T* p) { return _mm256_loadu_pd(p); }
  static void store(T* p, F v) { _mm256_storeu_pd(p, v); }
  static F set1(T v) { return _mm256_set1_pd(v); }
  static F add(F a, F b) { return _mm256_add_pd(a, b); }
  static F mul(F a, F b) { return _mm256_mul_pd(a, b); }
  static F div(F a, F b) { return _mm256_div_pd(a, b); }
  static F abs(F a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }
  static Mask less(F a, F b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
  static Mask equal(F a, F b) { return _mm256_cmp_pd(a, b, _CMP_EQ_OQ); }
  static F select(Mask m, F a, F b) { return _mm256_blendv_pd(b, a, m); }
  static F unpacklo(F a, F b) { return _mm256_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm256_unpackhi_pd(a, b); }
  // The two-bit pattern of one 128-bit half, repeated for the other.
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm256_shuffle_pd(a, b, kImm | kImm << 2);
  }
  static F loadChunks(const T* p, int k, int c) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(p + 2 * k)), _mm_loadu_pd(p + 2 * (c + k)), 1);
  }
  static void storeChunks(T* p, int k, int c, F v) {
    _mm_storeu_pd(p + 2 * k, _mm256_castpd256_pd128(v));
    _mm_storeu_pd(p + 2 * (c + k), _mm256_extractf128_pd(v, 1));
  }
  static void loadGroups3(const T* p, F& a, F& b, F& c) {
    a = loadChunks(p, 0, 3);
    b = loadChunks(p, 1, 3);
    c = loadChunks(p, 2, 3);
  }
  static void storeGroups3(T* p, F a, F b, F c) {
    storeChunks(p, 0, 3, a);
    storeChunks(p, 1, 3, b);
    storeChunks(p, 2, 3, c);
  }
  static void loadGroups4(const T* p, F& a, F& b, F& c, F& d) {
    a = loadChunks(p, 0, 4);
    b = loadChunks(p, 1, 4);
    c = loadChunks(p, 2, 4);
    d = loadChunks(p, 3, 4);
  }
  static void storeGroups4(T* p, F a, F b, F c, F d) {
    storeChunks(p, 0, 4, a);
    storeChunks(p, 1, 4, b);
    storeChunks(p, 2, 4, c);
    storeChunks(p, 3, 4, d);
  }
};

}  // namespace

unsigned int transformVectors3fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors3Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformPoints3fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return points3Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformVectors4fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors4Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformPoints4fAvx2(const float* m, const float* src, float* dst, unsigned int count) {
  return points4Loop<Avx2f>(m, src, dst, count);
}
unsigned int transformVectors3dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors3Loop<Avx2d>(m, src, dst, count);
}
unsigned int transformPoints3dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return points3Loop<Avx2d>(m, src, dst, count);
}
unsigned int transformVectors4dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors4Loop<Avx2d>(m, src, dst, count);
}
unsigned int transformPoints4dAvx2(const double* m, const double* src, double* dst, unsigned int count) {
  return points4Loop<Avx2d>(m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
