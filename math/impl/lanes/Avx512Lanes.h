#pragma once

/// \file
/// AVX-512 lanes: sixteen floats or eight doubles per register, behind the
/// names the vector loops are written with. Only AVX-512F instructions.
/// Included only by the unit built for AVX-512 (math/isa/). Everything here
/// lives in an anonymous namespace so that each unit keeps its own copy: an
/// inline function shared across units could be emitted with AVX-512
/// instructions and picked by the linker for a caller that runs without them.

#include <immintrin.h>

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// Sixteen floats per register.
struct Avx512Float {
  typedef float T;
  typedef __m512 F;
  typedef __mmask16 Mask;
  /// A lane number, as the cross-lane permutes read it.
  typedef int Index;
  static constexpr int N = 16;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 4;
  static F zero() { return _mm512_setzero_ps(); }
  static F set1(T v) { return _mm512_set1_ps(v); }
  static F load(const T* p) { return _mm512_loadu_ps(p); }
  static void store(T* p, F v) { _mm512_storeu_ps(p, v); }
  /// Non-temporal store to 64-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm512_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm512_add_ps(a, b); }
  static F mul(F a, F b) { return _mm512_mul_ps(a, b); }
  static F div(F a, F b) { return _mm512_div_ps(a, b); }
  // Clears the sign bit, like and-not with -0.
  static F abs(F a) { return _mm512_abs_ps(a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ); }
  static Mask greater(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_GT_OQ); }
  static Mask equal(F a, F b) { return _mm512_cmp_ps_mask(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm512_mask_blend_ps(m, b, a); }
  // Within each 128-bit quarter.
  static F unpacklo(F a, F b) { return _mm512_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm512_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm512_shuffle_ps(a, b, kImm);
  }
  /// Lane i is lane lanes[i] of a and b taken as one array of 2N.
  static F permute2(F a, __m512i lanes, F b) { return _mm512_permutex2var_ps(a, lanes, b); }
};

/// Eight doubles per register.
struct Avx512Double {
  typedef double T;
  typedef __m512d F;
  typedef __mmask8 Mask;
  /// A lane number, as the cross-lane permutes read it.
  typedef long long Index;
  static constexpr int N = 8;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 2;
  static F zero() { return _mm512_setzero_pd(); }
  static F set1(T v) { return _mm512_set1_pd(v); }
  static F load(const T* p) { return _mm512_loadu_pd(p); }
  static void store(T* p, F v) { _mm512_storeu_pd(p, v); }
  /// Non-temporal store to 64-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm512_stream_pd(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm512_add_pd(a, b); }
  static F mul(F a, F b) { return _mm512_mul_pd(a, b); }
  static F div(F a, F b) { return _mm512_div_pd(a, b); }
  // Clears the sign bit, like and-not with -0.
  static F abs(F a) { return _mm512_abs_pd(a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ); }
  static Mask greater(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_GT_OQ); }
  static Mask equal(F a, F b) { return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm512_mask_blend_pd(m, b, a); }
  // Within each 128-bit quarter.
  static F unpacklo(F a, F b) { return _mm512_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm512_unpackhi_pd(a, b); }
  /// kImm is the two-bit pattern of one 128-bit quarter, repeated for the others.
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm512_shuffle_pd(a, b, kImm | kImm << 2 | kImm << 4 | kImm << 6);
  }
  /// Lane i is lane lanes[i] of a and b taken as one array of 2N.
  static F permute2(F a, __m512i lanes, F b) { return _mm512_permutex2var_pd(a, lanes, b); }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
