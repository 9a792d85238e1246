#pragma once

/// \file
/// Translation, scale, shear, rotation and viewing transforms shared by the
/// float and double 4x4 matrices (CRTP mixin: M is the concrete matrix, T its
/// scalar, V3 and V4 its vectors). Make operations overwrite all sixteen
/// elements, set operations only the elements they name. pre... gives
/// T·this (the new transform applies first), post... gives this·T.

#include <cmath>

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/Matrix44Ops.h"
#include "math/impl/Trig.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// dst = a·b (a applies first), formed in a temporary so that dst may be a
/// or b; the very product of the matrices' own multiplies.
template <class M>
inline void concatenate(M& dst, const M& a, const M& b) noexcept {
  M product;
  productInto(product.data(), a.data(), b.data());
  M::copyMatrix(dst.data(), product.data());
}

/// Translation, scale, shear, rotation and look-at construction of the float
/// and double 4x4 matrices, alone or before (pre...) or after (post...) the
/// matrix's transform.
template <class M, class T, class V3, class V4>
class ZEMATH_API Matrix44Construction {
 public:
  /// this = the identity with row 3 = (t.x, t.y, t.z, 1).
  void makeTranslation(const V3& t) noexcept {
    self().makeIdentity();
    setTranslation(t);
  }
  /// m30, m31, m32 = t; nothing else changes.
  void setTranslation(const V3& t) noexcept {
    M& m = self();
    m(3, 0) = t.x;
    m(3, 1) = t.y;
    m(3, 2) = t.z;
  }
  /// t = (m30, m31, m32).
  void getTranslation(V3& t) const noexcept {
    const M& m = self();
    t.x = m(3, 0);
    t.y = m(3, 1);
    t.z = m(3, 2);
  }
  /// (m30, m31, m32), the translation, as a value.
  V3 getTranslation() const noexcept {
    V3 t;
    getTranslation(t);
    return t;
  }
  /// The translation of this (row 3) into out: make gives out =
  /// makeTranslation(t); otherwise only out's m30, m31, m32 are written.
  void getTranslation(M& out, bool make) const noexcept {
    V3 t;
    getTranslation(t);
    if (make) {
      out.makeTranslation(t);
    } else {
      out.setTranslation(t);
    }
  }
  /// this = T·this: row 3 += t.x row 0 + t.y row 1 + t.z row 2, all four columns.
  void preTranslation(const V3& t) noexcept {
    M& m = self();
    for (int c = 0; c < 4; ++c) m(3, c) = ((t.x * m(0, c) + t.y * m(1, c)) + t.z * m(2, c)) + m(3, c);
  }
  /// this = this·T: every row r gets t times its m_r3 added to columns 0-2.
  void postTranslation(const V3& t) noexcept {
    M& m = self();
    for (int r = 0; r < 4; ++r) {
      m(r, 0) = m(r, 0) + t.x * m(r, 3);
      m(r, 1) = m(r, 1) + t.y * m(r, 3);
      m(r, 2) = m(r, 2) + t.z * m(r, 3);
    }
  }

  /// this = the identity with the diagonal m00, m11, m22 = s.
  void makeScale(const V3& s) noexcept {
    self().makeIdentity();
    setScale(s);
  }
  /// this = the identity with m00 = m11 = m22 = s (m33 stays 1).
  void makeScale(T s) noexcept { makeScale(V3(s, s, s)); }
  /// this = scale s followed by the shears h = (xy, xz, yz), on the identity.
  void makeScale(const V3& s, const V3& h) noexcept {
    self().makeIdentity();
    setScale(s, h);
  }
  /// m00, m11, m22 = s; nothing else changes.
  void setScale(const V3& s) noexcept {
    M& m = self();
    m(0, 0) = s.x;
    m(1, 1) = s.y;
    m(2, 2) = s.z;
  }
  /// m00 = s.x; m10 = h.x s.y; m11 = s.y; m20 = h.y s.z; m21 = h.z s.z;
  /// m22 = s.z (scale, then the shears xy, xz, yz); nothing else changes.
  void setScale(const V3& s, const V3& h) noexcept {
    M& m = self();
    m(0, 0) = s.x;
    m(1, 0) = h.x * s.y;
    m(1, 1) = s.y;
    m(2, 0) = h.y * s.z;
    m(2, 1) = h.z * s.z;
    m(2, 2) = s.z;
  }
  /// this = S·this: rows 0, 1, 2 (all four columns) times s.x, s.y, s.z.
  void preScale(const V3& s) noexcept {
    M& m = self();
    for (int c = 0; c < 4; ++c) {
      m(0, c) = m(0, c) * s.x;
      m(1, c) = m(1, c) * s.y;
      m(2, c) = m(2, c) * s.z;
    }
  }
  /// this = this·S: columns 0, 1, 2 (all four rows) times s.x, s.y, s.z.
  void postScale(const V3& s) noexcept {
    M& m = self();
    for (int r = 0; r < 4; ++r) {
      m(r, 0) = m(r, 0) * s.x;
      m(r, 1) = m(r, 1) * s.y;
      m(r, 2) = m(r, 2) * s.z;
    }
  }

  /// 3x3 part = right-handed rotation by angle about axis (used as given, not
  /// normalised); below the small threshold the 3x3 part is the identity.
  void setRotationRadians(T angle, const V3& axis) noexcept;
  /// 3x3 part = Rx·Ry·Rz, the vector rotated about x first, then y, then z.
  void setRotationRadians(T x, T y, T z) noexcept;
  /// The axis-angle rotation with row 3 = (0, 0, 0, 1) and m03 = m13 = m23 = 0.
  void makeRotationRadians(T angle, const V3& axis) noexcept;
  /// The Euler rotation with row 3 = (0, 0, 0, 1) and m03 = m13 = m23 = 0.
  void makeRotationRadians(T x, T y, T z) noexcept;
  /// this = this·R, R the axis-angle rotation: R applies after this.
  void postRotationRadians(T angle, const V3& axis) noexcept;
  /// this = R·this, R the axis-angle rotation: R applies before this.
  void preRotationRadians(T angle, const V3& axis) noexcept;

  /// Viewing matrix of a camera at eye looking at center: columns 0-2 are the
  /// camera's x, y and z axes (z pointing from center back to eye), row 3 the
  /// negated products of eye with the columns.
  void makeLookAt(const V3& eye, const V3& center, const V3& up) noexcept;
  /// makeLookAt with the view direction given instead of a target point.
  void makeLookAtDirection(const V3& eye, const V3& direction, const V3& up) noexcept;

 private:
  M& self() noexcept { return *static_cast<M*>(this); }
  const M& self() const noexcept { return *static_cast<const M*>(this); }

  /// makeLookAt with the camera's z axis given, not yet normalised.
  void lookAlong(const V3& eye, const V3& towardsEye, const V3& up) noexcept;
  /// m03 = m13 = m23 = 0 and row 3 = (0, 0, 0, 1), from the named vectors.
  void clearAffineBorder() noexcept;
  /// v divided by its length when |v|² exceeds the smallest normal value of
  /// T; otherwise v unchanged (a zero or tiny vector stays as it is).
  static V3 guardedUnit(const V3& v) noexcept;
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
