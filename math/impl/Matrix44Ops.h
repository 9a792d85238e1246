#pragma once

/// \file
/// Layout and arithmetic shared by the float and double 4x4 matrices. The
/// concrete matrix holds its sixteen elements row by row (row r, column c at
/// 4r + c) and derives from this mixin, naming itself as M and its vectors as
/// V3 and V4 (CRTP). Vectors are row vectors multiplied on the left, so in a
/// product A·B the transform A applies first.

#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "math/impl/ArrayTransforms.h"
#include "math/impl/ExactOrder.h"
#include "math/zeMathThreshold.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// Writes a·b into r, each element summed left to right over k = 0..3.
/// r must be neither a nor b.
template <class T>
inline void productInto(T* r, const T* a, const T* b) noexcept {
  for (int c = 0; c < 4; ++c) {
    for (int row = 0; row < 4; ++row) {
      const T* ar = a + 4 * row;
      r[4 * row + c] = ar[0] * b[c] + ar[1] * b[4 + c] + ar[2] * b[8 + c] + ar[3] * b[12 + c];
    }
  }
}

#if defined(__SSE2__)
// The vector forms compute a whole result row at once, one element per lane:
// a[row][k] broadcast, times row k of b, added in the order k = 0..3 with
// separate multiplies and adds, so every element gets the bits of the sum
// above. SSE2 is part of x86-64, so no run-time choice is needed.

/// Writes a·b into r, a row of four floats at a time. r must be neither a nor b.
template <>
inline void productInto<float>(float* r, const float* a, const float* b) noexcept {
  const __m128 b0 = _mm_loadu_ps(b), b1 = _mm_loadu_ps(b + 4), b2 = _mm_loadu_ps(b + 8), b3 = _mm_loadu_ps(b + 12);
  for (int row = 0; row < 4; ++row) {
    const float* ar = a + 4 * row;
    __m128 sum = _mm_mul_ps(_mm_set1_ps(ar[0]), b0);
    sum = _mm_add_ps(sum, _mm_mul_ps(_mm_set1_ps(ar[1]), b1));
    sum = _mm_add_ps(sum, _mm_mul_ps(_mm_set1_ps(ar[2]), b2));
    sum = _mm_add_ps(sum, _mm_mul_ps(_mm_set1_ps(ar[3]), b3));
    _mm_storeu_ps(r + 4 * row, sum);
  }
}

/// Writes a·b into r, each row as two pairs of doubles. r must be neither a nor b.
template <>
inline void productInto<double>(double* r, const double* a, const double* b) noexcept {
  const __m128d b0l = _mm_loadu_pd(b), b0h = _mm_loadu_pd(b + 2), b1l = _mm_loadu_pd(b + 4), b1h = _mm_loadu_pd(b + 6),
                b2l = _mm_loadu_pd(b + 8), b2h = _mm_loadu_pd(b + 10), b3l = _mm_loadu_pd(b + 12),
                b3h = _mm_loadu_pd(b + 14);
  for (int row = 0; row < 4; ++row) {
    const double* ar = a + 4 * row;
    const __m128d a0 = _mm_set1_pd(ar[0]), a1 = _mm_set1_pd(ar[1]), a2 = _mm_set1_pd(ar[2]), a3 = _mm_set1_pd(ar[3]);
    __m128d lo = _mm_mul_pd(a0, b0l), hi = _mm_mul_pd(a0, b0h);
    lo = _mm_add_pd(lo, _mm_mul_pd(a1, b1l));
    hi = _mm_add_pd(hi, _mm_mul_pd(a1, b1h));
    lo = _mm_add_pd(lo, _mm_mul_pd(a2, b2l));
    hi = _mm_add_pd(hi, _mm_mul_pd(a2, b2h));
    lo = _mm_add_pd(lo, _mm_mul_pd(a3, b3l));
    hi = _mm_add_pd(hi, _mm_mul_pd(a3, b3h));
    _mm_storeu_pd(r + 4 * row, lo);
    _mm_storeu_pd(r + 4 * row + 2, hi);
  }
}
#endif

/// Layout, element access, arithmetic, products, comparison and array
/// transforms of the float and double 4x4 matrices. M is the concrete matrix,
/// T its scalar, V3 and V4 its vectors.
template <class M, class T, class V3, class V4>
class Matrix44Ops {
 public:
  using Scalar = T;  ///< The element type.

  /// The sixteen elements, row by row.
  T* data() noexcept { return reinterpret_cast<T*>(static_cast<M*>(this)); }
  /// The sixteen elements, row by row.
  const T* data() const noexcept { return reinterpret_cast<const T*>(static_cast<const M*>(this)); }
  /// Element i in storage order (row i / 4, column i % 4).
  T& operator[](int i) noexcept { return data()[i]; }
  /// Element i in storage order (row i / 4, column i % 4).
  const T& operator[](int i) const noexcept { return data()[i]; }
  /// Element at row r, column c.
  T& operator()(int r, int c) noexcept { return data()[4 * r + c]; }
  /// Element at row r, column c.
  const T& operator()(int r, int c) const noexcept { return data()[4 * r + c]; }

  /// Copies the sixteen elements of src to dst, positions 0 to 15 in order.
  static void copyMatrix(T* dst, const T* src) noexcept {
    for (int i = 0; i < 16; ++i) dst[i] = src[i];
  }

  /// this = the identity.
  void makeIdentity() noexcept {
    T* e = data();
    for (int i = 0; i < 16; ++i) e[i] = (i % 5 == 0) ? T(1) : T(0);
  }

  /// Transposes this matrix in place, through a temporary.
  void transpose() noexcept {
    T t[16];
    transposeInto(t, data());
    copyMatrix(data(), t);
  }
  /// this[r][c] = m[c][r], written in storage order straight from m. There is
  /// deliberately no aliasing guard: transpose(*this) scrambles; use transpose().
  void transpose(const M& m) noexcept { transposeInto(data(), m.data()); }

  /// this = a + b element by element.
  void add(const M& a, const M& b) noexcept {
    for (int i = 0; i < 16; ++i) data()[i] = a[i] + b[i];
  }
  /// this = a - b element by element.
  void subtract(const M& a, const M& b) noexcept {
    for (int i = 0; i < 16; ++i) data()[i] = a[i] - b[i];
  }
  /// this = a / b element by element (not a product with an inverse).
  void divide(const M& a, const M& b) noexcept {
    for (int i = 0; i < 16; ++i) data()[i] = a[i] / b[i];
  }

  /// The product this·b (this applies first, then b), by the arithmetic of
  /// matrixMultiply and of the double class's multiply(a, b), bit for bit.
  M operator*(const M& b) const noexcept {
    M product;
    multiplyInto(product.data(), data(), b.data());
    return product;
  }
  /// this = this·b: b applies after this matrix.
  M& operator*=(const M& b) noexcept {
    multiplyInto(data(), data(), b.data());
    return static_cast<M&>(*this);
  }
  /// Every element times s.
  M operator*(T s) const noexcept {
    M r;
    for (int i = 0; i < 16; ++i) r[i] = (*this)[i] * s;
    return r;
  }
  /// Every element times s.
  friend M operator*(T s, const M& m) noexcept { return m * s; }
  /// Every element divided by s (a division per element, not a product with 1 / s).
  M operator/(T s) const noexcept {
    M r;
    for (int i = 0; i < 16; ++i) r[i] = (*this)[i] / s;
    return r;
  }

  /// True when every |m[i] - this[i]| < 5e-7 (the single-precision threshold,
  /// in both classes): absolute, strict, and false for any NaN element.
  bool operator==(const M& m) const noexcept {
    for (int i = 0; i < 16; ++i) {
      const T d = std::fabs(m[i] - (*this)[i]);
      if (!(d < zeSmallThreshold<T>)) return false;
    }
    return true;
  }

  /// dst[i] = src[i] transformed as a direction by the 3x3 block; src may be dst.
  void transformVectors(V3* src, V3* dst, unsigned int count) const noexcept {
    transformVectorArray(self(), src, dst, count);
  }
  /// dst[i] = src[i] transformed as a point with the projective divide; src may be dst.
  void transformPoints(V3* src, V3* dst, unsigned int count) const noexcept {
    transformPointArray(self(), src, dst, count);
  }
  /// dst[i] = x, y, z of src[i] by the 3x3 block, w copied; src may be dst.
  void transformVectors(V4* src, V4* dst, unsigned int count) const noexcept {
    transformVectorArray(self(), src, dst, count);
  }
  /// dst[i] = src[i] times this matrix in full, no divide; src may be dst.
  void transformPoints(V4* src, V4* dst, unsigned int count) const noexcept {
    transformPointArray(self(), src, dst, count);
  }
  /// transformVectors of a source that is not to be written.
  void transformVectors(const V3* src, V3* dst, unsigned int count) const noexcept {
    transformVectorArray(self(), src, dst, count);
  }
  /// transformPoints of a source that is not to be written.
  void transformPoints(const V3* src, V3* dst, unsigned int count) const noexcept {
    transformPointArray(self(), src, dst, count);
  }
  /// transformVectors of a source that is not to be written.
  void transformVectors(const V4* src, V4* dst, unsigned int count) const noexcept {
    transformVectorArray(self(), src, dst, count);
  }
  /// transformPoints of a source that is not to be written.
  void transformPoints(const V4* src, V4* dst, unsigned int count) const noexcept {
    transformPointArray(self(), src, dst, count);
  }

  /// Largest absolute element, visiting in storage order from 0; NaN never wins.
  T getMaxElement() const noexcept {
    T largest = T(0);
    for (int i = 0; i < 16; ++i) {
      const T magnitude = std::fabs((*this)[i]);
      if (magnitude > largest) largest = magnitude;
    }
    return largest;
  }

 protected:
  /// This object as the concrete matrix type.
  const M& self() const noexcept { return *static_cast<const M*>(this); }

  /// dst = a·b; when dst is a or b the product goes through a temporary.
  static void multiplyInto(T* dst, const T* a, const T* b) noexcept {
    if (dst == a || dst == b) {
      T t[16];
      productInto(t, a, b);
      copyMatrix(dst, t);
    } else {
      productInto(dst, a, b);
    }
  }

 private:
  static void transposeInto(T* dst, const T* src) noexcept {
    for (int i = 0; i < 16; ++i) dst[i] = src[4 * (i % 4) + i / 4];
  }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
