#pragma once

/// \file
/// Bodies of impl::Matrix44Inversion. Included by the matrix sources, which
/// instantiate the mixin for their class. Every sum is evaluated left to right
/// as written; r = 1/d is formed once and multiplied where that is the rule.

#include <cmath>

#include "math/impl/Matrix44Inversion.h"
#include "math/zeMathThreshold.h"

namespace Lux {
namespace Math {
namespace impl {

namespace inversion {

/// e[4b+x]·e[4d+y] - e[4b+y]·e[4d+x]: the 2x2 minor of rows b, d and columns x, y.
template <class T>
inline T minor2(const T* e, int b, int d, int x, int y) noexcept {
  return e[4 * b + x] * e[4 * d + y] - e[4 * b + y] * e[4 * d + x];
}

/// The 3x3 determinant of rows a, b, d and columns x, y, z, expanded along
/// row a with the 2x2 minors of rows b and d.
template <class T>
inline T minor3(const T* e, const int (&row)[3], const int (&col)[3]) noexcept {
  const int a = row[0], b = row[1], d = row[2];
  const int x = col[0], y = col[1], z = col[2];
  return e[4 * a + x] * minor2(e, b, d, y, z) - e[4 * a + y] * minor2(e, b, d, x, z) +
         e[4 * a + z] * minor2(e, b, d, x, y);
}

/// The three indices 0..3 other than skipped, in ascending order.
inline void allBut(int skipped, int (&out)[3]) noexcept {
  int n = 0;
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) {
    if (i != skipped) out[n++] = i;
  }
}

/// out(r, c) = finish(the cofactor of m's element (c, r)): finish applied to
/// the transposed cofactor matrix. m is read completely before out is written.
/// The loops are unrolled in full, so that every index is a constant and each
/// cofactor straight-line code; as loops, the index arrays cost most of invert().
template <class T, class M, class F>
inline void cofactorsInto(const M& m, M& out, F finish) noexcept {
  T e[16];
  for (int i = 0; i < 16; ++i) e[i] = m[i];
#pragma GCC unroll 4
  for (int r = 0; r < 4; ++r) {
#pragma GCC unroll 4
    for (int c = 0; c < 4; ++c) {
      // Drop row c and column r.
      int rows[3], cols[3];
      allBut(c, rows);
      allBut(r, cols);
      const T minor = minor3(e, rows, cols);
      out(r, c) = finish(((r + c) % 2 == 0) ? minor : -minor);
    }
  }
}

}  // namespace inversion

template <class M, class T, class V3, class V4>
T Matrix44Inversion<M, T, V3, V4>::determinant(const M& m) noexcept {
  // The 2x2 minors of rows 2 and 3 first, then the expansion along row 0.
  const T A = m(2, 2) * m(3, 3) - m(2, 3) * m(3, 2);
  const T B = m(2, 1) * m(3, 3) - m(2, 3) * m(3, 1);
  const T C = m(3, 1) * m(2, 0) - m(3, 0) * m(2, 1);
  const T D = m(3, 3) * m(2, 0) - m(2, 3) * m(3, 0);
  const T E = m(2, 1) * m(3, 2) - m(2, 2) * m(3, 1);
  const T F = m(3, 2) * m(2, 0) - m(2, 2) * m(3, 0);
  return (m(1, 1) * A - m(1, 2) * B + m(1, 3) * E) * m(0, 0) - (A * m(1, 0) - m(1, 2) * D + m(1, 3) * F) * m(0, 1) +
         (B * m(1, 0) - D * m(1, 1) + m(1, 3) * C) * m(0, 2) - (E * m(1, 0) - F * m(1, 1) + C * m(1, 2)) * m(0, 3);
}

template <class M, class T, class V3, class V4>
void Matrix44Inversion<M, T, V3, V4>::adjoint(const M& m, M& adj) noexcept {
  inversion::cofactorsInto<T>(m, adj, [](T cofactor) { return cofactor; });
}

template <class M, class T, class V3, class V4>
int Matrix44Inversion<M, T, V3, V4>::invertAboveThreshold(const M& m, T smallest) noexcept {
  const T d = determinant(m);
  if (std::fabs(d) < smallest) return kFailure;
  const T r = T(1) / d;
  // adjoint(m) * r, each element multiplied as it is made: the same products,
  // without a round trip through a temporary matrix.
  inversion::cofactorsInto<T>(m, self(), [r](T cofactor) { return cofactor * r; });
  return kSuccess;
}

template <class M, class T, class V3, class V4>
int Matrix44Inversion<M, T, V3, V4>::invertOrthonormal(const M& m) noexcept {
  M& t = self();
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) t(r, c) = m(c, r);
  }
  t(0, 3) = T(0);
  t(1, 3) = T(0);
  t(2, 3) = T(0);
  t(3, 3) = T(1);
  // The translation's dot product with each row of m's 3x3, negated.
  for (int c = 0; c < 3; ++c) {
    t(3, c) = -(m(c, 0) * m(3, 0) + m(c, 1) * m(3, 1) + m(c, 2) * m(3, 2));
  }
  return kSuccess;
}

template <class M, class T, class V3, class V4>
int Matrix44Inversion<M, T, V3, V4>::invertOrthogonal(const M& m) noexcept {
  // Row 0 alone gives the squared scale; the other rows are trusted to match.
  const T s = m(0, 0) * m(0, 0) + m(0, 1) * m(0, 1) + m(0, 2) * m(0, 2);
  if (std::fabs(s) < zeSmallThreshold<T>) return self().invert(m);
  const T k = T(1) / s;
  M& t = self();
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) t(r, c) = m(c, r) * k;
  }
  t(0, 3) = T(0);
  t(1, 3) = T(0);
  t(2, 3) = T(0);
  t(3, 3) = T(1);
  for (int c = 0; c < 3; ++c) {
    t(3, c) = -(m(3, 0) * t(0, c) + m(3, 1) * t(1, c) + m(3, 2) * t(2, c));
  }
  return kSuccess;
}

template <class M, class T, class V3, class V4>
int Matrix44Inversion<M, T, V3, V4>::invertAffine(const M& m) noexcept {
  // The six products of the 3x3 determinant, split by sign so that the
  // cancellation in their sum can be measured against their magnitude.
  const T products[6] = {m(0, 0) * m(1, 1) * m(2, 2),  m(0, 1) * m(1, 2) * m(2, 0),  m(0, 2) * m(1, 0) * m(2, 1),
                         -m(0, 2) * m(1, 1) * m(2, 0), -m(0, 1) * m(1, 0) * m(2, 2), -m(0, 0) * m(1, 2) * m(2, 1)};
  T pos = T(0);
  T neg = T(0);
  // Unrolled, the six products stay in registers instead of a stack array.
#pragma GCC unroll 6
  for (const T p : products) {
    if (p >= T(0)) {
      pos = pos + p;
    } else {
      neg = neg + p;
    }
  }
  const T det = pos + neg;
  // An all-zero 3x3 gives 0/0 = NaN here, which does not fall back.
  if (std::fabs(det / (pos - neg)) < zeSmallThreshold<T>) return self().invert(m);

  const T r = T(1) / det;
  M& t = self();
  t(0, 0) = (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)) * r;
  t(1, 0) = -(m(1, 0) * m(2, 2) - m(1, 2) * m(2, 0)) * r;
  t(2, 0) = (m(1, 0) * m(2, 1) - m(1, 1) * m(2, 0)) * r;
  t(0, 1) = -(m(0, 1) * m(2, 2) - m(0, 2) * m(2, 1)) * r;
  t(1, 1) = (m(0, 0) * m(2, 2) - m(0, 2) * m(2, 0)) * r;
  t(2, 1) = -(m(0, 0) * m(2, 1) - m(0, 1) * m(2, 0)) * r;
  t(0, 2) = (m(0, 1) * m(1, 2) - m(0, 2) * m(1, 1)) * r;
  t(1, 2) = -(m(0, 0) * m(1, 2) - m(0, 2) * m(1, 0)) * r;
  t(2, 2) = (m(0, 0) * m(1, 1) - m(0, 1) * m(1, 0)) * r;
  for (int c = 0; c < 3; ++c) {
    t(3, c) = -(m(3, 0) * t(0, c) + m(3, 1) * t(1, c) + m(3, 2) * t(2, c));
  }
  t(0, 3) = T(0);
  t(1, 3) = T(0);
  t(2, 3) = T(0);
  t(3, 3) = T(1);
  return kSuccess;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
