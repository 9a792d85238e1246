#pragma once

/// \file
/// AVX2 lanes: eight floats or four doubles per register, behind the names
/// the vector loops are written with. Included only by the unit built for
/// AVX2 (math/isa/). Everything here lives in an anonymous namespace so that
/// each unit keeps its own copy: an inline function shared across units
/// could be emitted with AVX2 instructions and picked by the linker for a
/// caller that runs without them.

#include <immintrin.h>

#include <cstring>

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// Eight floats per register.
struct Avx2Float {
  typedef float T;
  typedef __m256 F;
  typedef __m256 Mask;
  static constexpr int N = 8;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 4;
  /// Permutes stay within each 128 bits.
  static constexpr bool kPermutesAcross = false;
  static F zero() { return _mm256_setzero_ps(); }
  static F set1(T v) { return _mm256_set1_ps(v); }
  static F load(const T* p) { return _mm256_loadu_ps(p); }
  static void store(T* p, F v) { _mm256_storeu_ps(p, v); }
  /// The 128 bits at lo in the low half, those at hi in the high half.
  static F loadHalves(const T* lo, const T* hi) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(lo)), _mm_loadu_ps(hi), 1);
  }
  static void storeHalves(T* lo, T* hi, F v) {
    _mm_storeu_ps(lo, _mm256_castps256_ps128(v));
    _mm_storeu_ps(hi, _mm256_extractf128_ps(v, 1));
  }
  /// The low halves of a and b, and their high halves.
  static F lowHalves(F a, F b) { return _mm256_permute2f128_ps(a, b, 0x20); }
  static F highHalves(F a, F b) { return _mm256_permute2f128_ps(a, b, 0x31); }
  /// Lanes 0 to 2 of the low half to lo, of the high half to hi, which
  /// need not be aligned; nothing after them is written.
  static void store3Halves(T* lo, T* hi, F v) {
    const __m128 l = _mm256_castps256_ps128(v), h = _mm256_extractf128_ps(v, 1);
    const T z[2] = {_mm_cvtss_f32(_mm_movehl_ps(l, l)), _mm_cvtss_f32(_mm_movehl_ps(h, h))};
    _mm_storel_pi(reinterpret_cast<__m64*>(lo), l);
    std::memcpy(lo + 2, &z[0], sizeof z[0]);
    _mm_storel_pi(reinterpret_cast<__m64*>(hi), h);
    std::memcpy(hi + 2, &z[1], sizeof z[1]);
  }
  /// Non-temporal store to 32-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm256_stream_ps(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm256_add_ps(a, b); }
  static F sub(F a, F b) { return _mm256_sub_ps(a, b); }
  static F mul(F a, F b) { return _mm256_mul_ps(a, b); }
  static F div(F a, F b) { return _mm256_div_ps(a, b); }
  static F abs(F a) { return _mm256_andnot_ps(_mm256_set1_ps(-0.0f), a); }
  /// The sign bit flipped, as a scalar negation does.
  static F neg(F a) { return _mm256_xor_ps(_mm256_set1_ps(-0.0f), a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_LT_OQ); }
  static Mask lessEqual(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_LE_OQ); }
  static Mask greater(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_GT_OQ); }
  static Mask equal(F a, F b) { return _mm256_cmp_ps(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm256_blendv_ps(b, a, m); }
  /// Bit i set where lane i of the mask is.
  static unsigned int maskBits(Mask m) { return unsigned(_mm256_movemask_ps(m)); }
  // Within each 128-bit half.
  static F unpacklo(F a, F b) { return _mm256_unpacklo_ps(a, b); }
  static F unpackhi(F a, F b) { return _mm256_unpackhi_ps(a, b); }
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm256_shuffle_ps(a, b, kImm);
  }
};

/// Four doubles per register.
struct Avx2Double {
  typedef double T;
  typedef __m256d F;
  typedef __m256d Mask;
  static constexpr int N = 4;
  /// Scalars per 128 bits.
  static constexpr int kChunk = 2;
  /// Permutes stay within each 128 bits.
  static constexpr bool kPermutesAcross = false;
  static F zero() { return _mm256_setzero_pd(); }
  static F set1(T v) { return _mm256_set1_pd(v); }
  static F load(const T* p) { return _mm256_loadu_pd(p); }
  static void store(T* p, F v) { _mm256_storeu_pd(p, v); }
  /// The 128 bits at lo in the low half, those at hi in the high half.
  static F loadHalves(const T* lo, const T* hi) {
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(lo)), _mm_loadu_pd(hi), 1);
  }
  static void storeHalves(T* lo, T* hi, F v) {
    _mm_storeu_pd(lo, _mm256_castpd256_pd128(v));
    _mm_storeu_pd(hi, _mm256_extractf128_pd(v, 1));
  }
  /// Non-temporal store to 32-byte aligned p; fence() orders it.
  static void stream(T* p, F v) { _mm256_stream_pd(p, v); }
  static void fence() { _mm_sfence(); }
  static F add(F a, F b) { return _mm256_add_pd(a, b); }
  static F mul(F a, F b) { return _mm256_mul_pd(a, b); }
  static F div(F a, F b) { return _mm256_div_pd(a, b); }
  static F abs(F a) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a); }
  // Ordered and quiet: false when either side is NaN.
  static Mask less(F a, F b) { return _mm256_cmp_pd(a, b, _CMP_LT_OQ); }
  static Mask greater(F a, F b) { return _mm256_cmp_pd(a, b, _CMP_GT_OQ); }
  static Mask equal(F a, F b) { return _mm256_cmp_pd(a, b, _CMP_EQ_OQ); }
  /// a where the mask is set, b elsewhere.
  static F select(Mask m, F a, F b) { return _mm256_blendv_pd(b, a, m); }
  // Within each 128-bit half.
  static F unpacklo(F a, F b) { return _mm256_unpacklo_pd(a, b); }
  static F unpackhi(F a, F b) { return _mm256_unpackhi_pd(a, b); }
  /// kImm is the two-bit pattern of one 128-bit half, repeated for the other.
  template <int kImm>
  static F shuffle(F a, F b) {
    return _mm256_shuffle_pd(a, b, kImm | kImm << 2);
  }
};

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
