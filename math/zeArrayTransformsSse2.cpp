// The SSE2 array transforms: four floats or two doubles per vector.

#include <emmintrin.h>

#include "math/impl/ArrayTransformLoop.h"
#include "math/impl/ArrayTransformRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

struct Sse2f {
  typedef float T;
  typedef __m128 F;
  typedef __m128 Mask;
  static constexpr int N = 4;
  static constexpr int kChunk = 4;
  static constexpr bool kPermutesAcross = false;
  static F load(const T* p) { return _mm_loadu_ps(p); }
  static void store(T* p, F v) { _mm_storeu_ps(p, v); }
  static F set1(T v) { return _mm_set1_ps(v); }
  static F add(F a, F b) { return _mm_add_ps(a, b); }
  static F mul(F a, F b) { return _mm_mul_ps(a, b); }
  static F div(F a, F b) { return _mm_div_ps(a, b); }
  static F abs(F a) { return _mm_andnot_ps(_mm_set1_ps(-0.0f), a); }
  // Ordered: false when either side is NaN.
  static Mask less(F a, F b) { return _mm_cmplt_ps(a, b); }
  static Mask equal(F a, F b) { return _mm_cmpeq_ps(a, b); }
  static F select(Mask m, F a, F b) { return _mm_or_ps(_mm_and_ps(m, a), _mm_andnot_ps(m, b)); }
  static F unpacklo(F a, F b) { return _mm_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm_shuffle_ps(a, b, kImm);
  }
  static F loadChunks(const T* p, int k, int /*c*/) { return _mm_loadu_ps(p + 4 * k); }
  static void storeChunks(T* p, int k, int /*c*/, F v) { _mm_storeu_ps(p + 4 * k, v); }
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

struct Sse2d {
  typedef double T;
  typedef __m128d F;
  typedef __m128d Mask;
  static constexpr int N = 2;
  static constexpr int kChunk = 2;
  static constexpr bool kPermutesAcross = false;
  static F load(const T* p) { return _mm_loadu_pd(p); }
  static void store(T* p, F v) { _mm_storeu_pd(p, v); }
  static F set1(T v) { return _mm_set1_pd(v); }
  static F add(F a, F b) { return _mm_add_pd(a, b); }
  static F mul(F a, F b) { return _mm_mul_pd(a, b); }
  static F div(F a, F b) { return _mm_div_pd(a, b); }
  static F abs(F a) { return _mm_andnot_pd(_mm_set1_pd(-0.0), a); }
  static Mask less(F a, F b) { return _mm_cmplt_pd(a, b); }
  static Mask equal(F a, F b) { return _mm_cmpeq_pd(a, b); }
  static F select(Mask m, F a, F b) { return _mm_or_pd(_mm_and_pd(m, a), _mm_andnot_pd(m, b)); }
  static F unpacklo(F a, F b) { return _mm_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm_unpackhi_pd(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm_shuffle_pd(a, b, kImm);
  }
  static F loadChunks(const T* p, int k, int /*c*/) { return _mm_loadu_pd(p + 2 * k); }
  static void storeChunks(T* p, int k, int /*c*/, F v) { _mm_storeu_pd(p + 2 * k, v); }
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

unsigned int transformVectors3fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors3Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformPoints3fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return points3Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformVectors4fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return vectors4Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformPoints4fSse2(const float* m, const float* src, float* dst, unsigned int count) {
  return points4Loop<Sse2f>(m, src, dst, count);
}
unsigned int transformVectors3dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors3Loop<Sse2d>(m, src, dst, count);
}
unsigned int transformPoints3dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return points3Loop<Sse2d>(m, src, dst, count);
}
unsigned int transformVectors4dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return vectors4Loop<Sse2d>(m, src, dst, count);
}
unsigned int transformPoints4dSse2(const double* m, const double* src, double* dst, unsigned int count) {
  return points4Loop<Sse2d>(m, src, dst, count);
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
