#pragma once

/// \file
/// Operations shared by the float and double quaternion twins. Each concrete
/// quaternion (zeQuaternionf, zeQuaterniond) holds x, y, z (the vector part)
/// and w (the scalar part) and derives from QuaternionOps, naming itself as Q
/// and its matrix as M (CRTP). Where the twins deliberately differ, the
/// concrete class hides the member below with its own.
///
/// Every operation reads all of its inputs before writing, so `this` may be
/// one of its own arguments.

#include <cmath>

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/Trig.h"
#include "math/impl/VecOps.h"
#include "math/zeMathThreshold.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// pi/2 in the precision of T: 1.5707964f for float, 1.5707963267948966 for double.
template <class T>
constexpr T zeHalfPi = static_cast<T>(1.5707963267948966);

/// Writes the 3x3 rotation block of the quaternion (x, y, z, w) into the
/// elements m0-m2, m4-m6, m8-m10 of the row-by-row array m; x2, y2, z2 are
/// x, y, z times the caller's factor (2 for a unit quaternion). Nothing else
/// of m is touched.
template <class T>
inline void writeRotationBlock(T* m, T x, T y, T z, T w, T x2, T y2, T z2) noexcept {
  m[0] = T(1) - (y * y2 + z * z2);
  m[1] = x * y2 - w * z2;
  m[2] = x * z2 + w * y2;
  m[4] = x * y2 + w * z2;
  m[5] = T(1) - (x * x2 + z * z2);
  m[6] = y * z2 - w * x2;
  m[8] = x * z2 - w * y2;
  m[9] = y * z2 + w * x2;
  m[10] = T(1) - (x * x2 + y * y2);
}

/// Writes the rest of a rotation matrix around its 3x3 block: m3 = m7 = m11 = 0
/// and row 3 = (0, 0, 0, 1).
template <class T>
inline void writeIdentityBorder(T* m) noexcept {
  m[3] = T(0);
  m[7] = T(0);
  m[11] = T(0);
  m[12] = T(0);
  m[13] = T(0);
  m[14] = T(0);
  m[15] = T(1);
}

/// The operations of the float and double quaternions: algebra, conversion to
/// and from matrices and Euler angles, interpolation. Q is the concrete
/// quaternion, T its scalar, M its matrix.
template <class Q, class T, class M>
class ZEMATH_API QuaternionOps : public VecAccess<Q, T, 4> {
 public:
  /// this = a b from the eight-product scheme: x = P1 - (P5 + P6 + P7 + P8) / 2,
  /// y = P3 + (P5 - P6 + P7 - P8) / 2, z = P4 + (P5 - P6 - P7 + P8) / 2,
  /// w = P2 + (P7 + P8 - P5 - P6) / 2, which is the Hamilton product.
  void multiply(const Q& a, const Q& b) noexcept {
    const Products p(a, b);
    set(p.p1 - T(0.5) * (p.p5 + p.p6 + p.p7 + p.p8), p.p3 + T(0.5) * (p.p5 - p.p6 + p.p7 - p.p8),
        p.p4 + T(0.5) * (p.p5 - p.p6 - p.p7 + p.p8), p.p2 + T(0.5) * (p.p7 + p.p8 - p.p5 - p.p6));
  }

  /// The Hamilton product this b by the eight-product scheme of multiply()
  /// above, in the precision of T. The order is that of the matrices: this
  /// applies first, then b, so getMatrix() of a * b is getMatrix(a) *
  /// getMatrix(b) up to rounding. For zeQuaternionf it is multiply(a, b) bit
  /// for bit; zeQuaterniond::multiply keeps its own y and z on purpose, so
  /// the double class's * is the Hamilton product and multiply() is not.
  Q operator*(const Q& b) const noexcept {
    Q product;
    static_cast<QuaternionOps&>(product).multiply(this->self(), b);
    return product;
  }
  /// this = this * b: b applies after this rotation.
  Q& operator*=(const Q& b) noexcept { return this->self() = *this * b; }
  /// Every component times s.
  Q operator*(T s) const noexcept {
    const Q& q = this->self();
    return Q(q.x * s, q.y * s, q.z * s, q.w * s);
  }
  /// Every component times s.
  friend Q operator*(T s, const Q& q) noexcept { return q * s; }
  /// Every component divided by s (a division per component, not a product with 1 / s).
  Q operator/(T s) const noexcept {
    const Q& q = this->self();
    return Q(q.x / s, q.y / s, q.z / s, q.w / s);
  }

  /// this = (-q.x, -q.y, -q.z, q.w).
  void conjugate(const Q& q) noexcept { set(-q.x, -q.y, -q.z, q.w); }

  /// this = conjugate of q times 1 / (x x + y y + z z + w w) of q. A zero
  /// quaternion gives non-finite components.
  void invert(const Q& q) noexcept {
    const T scale = T(1) / norm(q);
    set(-q.x * scale, -q.y * scale, -q.z * scale, q.w * scale);
  }

  /// Writes the whole rotation matrix of this quaternion into m with the plain
  /// factor 2 (this is not normalised): the 3x3 block, m3 = m7 = m11 = 0,
  /// row 3 = (0, 0, 0, 1).
  void getMatrix(M& m) const noexcept;
  /// The whole rotation matrix of this quaternion (getMatrix(m) of the
  /// quaternion's own class), as a value.
  M getMatrix() const noexcept {
    M m;
    this->self().getMatrix(m);
    return m;
  }

  /// Quaternion of the 3x3 block of m: from the trace when it is not negative,
  /// else from the largest diagonal element (ties to the earlier candidate).
  /// Nothing is normalised; a negative square-root argument gives NaN.
  void setMatrix(const M& m) noexcept;

  /// Quaternion of the Euler rotation Rx·Ry·Rz (radians): the product
  /// qx qy qz of the single-axis quaternions of the negated half-angles.
  void setRotationRadians(T rx, T ry, T rz) noexcept;

  /// Euler angles (radians) of this quaternion, read from its normalised
  /// rotation matrix: ry = asin(-m2), rx = atan2(m6, m10), rz = atan2(m1, m0).
  void getRotationRadians(T& rx, T& ry, T& rz) const noexcept;

  /// Shortest-path linear blend a (1 - t) + b t, b negated first when a . b < 0;
  /// the result is not normalised. A NaN dot product takes the perpendicular form.
  void lerp(T t, const Q& a, const Q& b) noexcept {
    T d = dot(a, b);
    Q end = b;
    if (d < T(0)) {
      end = negated(b);
      d = -d;
    }
    if (T(1) + d > zeSmallThreshold<T>)
      blend(t, a, end);
    else
      perpendicular(t, a, end);
  }

  /// Spherical blend from a to b along the shorter arc, by trigonometry:
  /// a sin((1 - t) theta) / sin(theta) + b sin(t theta) / sin(theta) with
  /// theta = acos(a . b), a plain linear blend when the two nearly coincide.
  /// The result is not normalised.
  void slerp(T t, const Q& a, const Q& b) noexcept;

 protected:
  /// The angles getRotationRadians stores when cos(ry) is exactly 0 (in
  /// practice a branch no float or double input reaches): rx = atan2(m4, m5),
  /// rz = 0, ry left as it is. m is the quaternion's normalised rotation
  /// matrix. Called through Q, so a twin may give its own.
  static void getPoleRotationRadians(const M& m, T& rx, T& ry, T& rz) noexcept;

  /// The eight products shared by both multiplication forms.
  struct Products {
    ///@{ P1 = (w1 + x1)(w2 + x2), P2 = (z1 - y1)(y2 - z2), P3 = (w1 - x1)(y2 + z2),
    /// P4 = (y1 + z1)(w2 - x2), P5 = (x1 + z1)(x2 + y2), P6 = (x1 - z1)(x2 - y2),
    /// P7 = (w1 + y1)(w2 - z2), P8 = (w1 - y1)(w2 + z2).
    T p1, p2, p3, p4, p5, p6, p7, p8;
    ///@}
    /// The eight products of a = (x1, y1, z1, w1) and b = (x2, y2, z2, w2).
    Products(const Q& a, const Q& b) noexcept
        : p1((a.w + a.x) * (b.w + b.x)),
          p2((a.z - a.y) * (b.y - b.z)),
          p3((a.w - a.x) * (b.y + b.z)),
          p4((a.y + a.z) * (b.w - b.x)),
          p5((a.x + a.z) * (b.x + b.y)),
          p6((a.x - a.z) * (b.x - b.y)),
          p7((a.w + a.y) * (b.w - b.z)),
          p8((a.w - a.y) * (b.w + b.z)) {}
  };

  /// x x + y y + z z + w w, left to right.
  static T norm(const Q& q) noexcept { return q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w; }
  /// a.x b.x + a.y b.y + a.z b.z + a.w b.w, left to right.
  static T dot(const Q& a, const Q& b) noexcept { return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w; }
  /// All four components negated.
  static Q negated(const Q& q) noexcept { return Q(-q.x, -q.y, -q.z, -q.w); }

  /// this = a s0 + b s1 componentwise.
  void weigh(const Q& a, T s0, const Q& b, T s1) noexcept {
    set(a.x * s0 + b.x * s1, a.y * s0 + b.y * s1, a.z * s0 + b.z * s1, a.w * s0 + b.w * s1);
  }
  /// this = a (1 - t) + b t componentwise.
  void blend(T t, const Q& a, const Q& b) noexcept { weigh(a, T(1) - t, b, t); }
  /// The blend towards b turned a quarter turn away from a, for a and b too
  /// close to opposite to blend: with s0 = sin((1 - t) pi/2), s1 = sin(t pi/2),
  /// this = (a.x s0 - b.y s1, a.y s0 + b.x s1, a.z s0 - b.w s1, a.w s0 + b.z s1).
  void perpendicular(T t, const Q& a, const Q& b) noexcept {
    const T s0 = impl::sin((T(1) - t) * zeHalfPi<T>);
    const T s1 = impl::sin(t * zeHalfPi<T>);
    // Computed as a s0 + (-b.y, b.x, -b.w, b.z) s1, which has the same bits
    // (x - y z is exactly x + (-y) z): g++ 12 turns the alternating subtract
    // and add of products into one fused instruction (vfmaddsub) for targets
    // with FMA, even under -ffp-contract=off.
    weigh(a, s0, Q(-b.y, b.x, -b.w, b.z), s1);
  }

  /// this = (x, y, z, w).
  void set(T x, T y, T z, T w) noexcept {
    Q& q = this->self();
    q.x = x;
    q.y = y;
    q.z = z;
    q.w = w;
  }
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
