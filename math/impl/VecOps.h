#pragma once

/// \file
/// Operations shared by the float and double vector twins. Each concrete
/// vector type (zeVec3f, zeVec3d, ...) holds its components and derives from
/// the mixin of its arity here, naming itself as V (CRTP). A twin that
/// deliberately differs hides the shared member with its own, in its header.
///
/// Every operation reads all of its inputs before writing, so `this` may be
/// one of its own arguments.

#include <cmath>

#include "math/impl/ExactOrder.h"
#include "math/impl/Truncate.h"
#include "math/zeMathEnums.h"
#include "math/zeMathThreshold.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {
namespace impl {

/// Component access shared by every vector type, float, double and byte.
/// The components of V are contiguous and start at its address.
template <class V, class T, int N>
class VecAccess {
 public:
  using Scalar = T;                          ///< The component type.
  static constexpr int kComponentCount = N;  ///< The number of components.

  /// Pointer to the first of the N contiguous components.
  T* data() noexcept { return reinterpret_cast<T*>(static_cast<V*>(this)); }
  /// Pointer to the first of the N contiguous components.
  const T* data() const noexcept { return reinterpret_cast<const T*>(static_cast<const V*>(this)); }
  /// Component i (0 = x or r).
  T& operator[](int i) noexcept { return data()[i]; }
  /// Component i (0 = x or r).
  const T& operator[](int i) const noexcept { return data()[i]; }

 protected:
  /// This object as the concrete vector type.
  V& self() noexcept { return *static_cast<V*>(this); }
  /// This object as the concrete vector type.
  const V& self() const noexcept { return *static_cast<const V*>(this); }
};

/// Quadrant of (x, y): 2 when x < 0, plus 1 when y < 0. Zero, -0 and NaN count as positive.
template <class T>
inline ZE_MATH_PLANAR_REGION quadrantOf(T x, T y) noexcept {
  return static_cast<ZE_MATH_PLANAR_REGION>((T(0) > x ? 2 : 0) + (T(0) > y ? 1 : 0));
}

/// Octant of (x, y, z): 4 when x < 0, plus 2 when y < 0, plus 1 when z < 0.
template <class T>
inline ZE_MATH_SPATIAL_REGION octantOf(T x, T y, T z) noexcept {
  return static_cast<ZE_MATH_SPATIAL_REGION>((T(0) > x ? 4 : 0) + (T(0) > y ? 2 : 0) + (T(0) > z ? 1 : 0));
}

/// x, y, z of a x b: (a.y b.z - a.z b.y, a.z b.x - a.x b.z, a.x b.y - a.y b.x).
template <class V, class T>
inline void crossXYZ(const V& a, const V& b, T& x, T& y, T& z) noexcept {
  x = a.y * b.z - a.z * b.y;
  y = a.z * b.x - a.x * b.z;
  z = a.x * b.y - a.y * b.x;
}

/// Arithmetic shared by the float and double vectors of N components.
template <class V, class T, int N>
class VecOps : public VecAccess<V, T, N> {
  using Access = VecAccess<V, T, N>;
  // The component loops below carry `#pragma GCC unroll 4`: left as loops,
  // a result is stored one component at a time and read back whole, which
  // stalls. The pragma takes a literal, not N, hence this bound.
  static_assert(N <= 4, "the component loops are unrolled for at most 4 components");

 public:
  /// Componentwise this + b.
  V operator+(const V& b) const noexcept {
    return zip(this->self(), b, [](T p, T q) { return p + q; });
  }
  /// Componentwise this - b.
  V operator-(const V& b) const noexcept {
    return zip(this->self(), b, [](T p, T q) { return p - q; });
  }
  /// Every component times s.
  V operator*(T s) const noexcept {
    return zip(this->self(), this->self(), [s](T p, T) { return p * s; });
  }
  /// Every component divided by s (a division per component, not a product
  /// with 1 / s).
  V operator/(T s) const noexcept {
    return zip(this->self(), this->self(), [s](T p, T) { return p / s; });
  }
  /// Every component times s.
  friend V operator*(T s, const V& a) noexcept { return a * s; }
  /// Every component negated.
  V operator-() const noexcept {
    return zip(this->self(), this->self(), [](T p, T) { return -p; });
  }
  /// Exact componentwise equality (NaN is unequal to everything, -0 equals +0).
  bool operator==(const V& b) const noexcept {
    const V& a = this->self();
#pragma GCC unroll 4
    for (int i = 0; i < N; ++i)
      if (!(a[i] == b[i])) return false;
    return true;
  }
  /// Negation of ==.
  bool operator!=(const V& b) const noexcept { return !(*this == b); }

  /// this = this + b.
  V& operator+=(const V& b) noexcept { return this->self() = this->self() + b; }
  /// this = this - b.
  V& operator-=(const V& b) noexcept { return this->self() = this->self() - b; }
  /// this = this * s.
  V& operator*=(T s) noexcept { return this->self() = this->self() * s; }
  /// this = this / s.
  V& operator/=(T s) noexcept { return this->self() = this->self() / s; }

  /// Sum of the componentwise products of all N components, left to right.
  T dot(const V& b) const noexcept {
    const V& a = this->self();
    T sum = a[0] * b[0];
#pragma GCC unroll 4
    for (int i = 1; i < N; ++i) sum = sum + a[i] * b[i];
    return sum;
  }
  /// sqrt(dot(this, this)).
  T length() const noexcept { return std::sqrt(dot(this->self())); }
  /// Scales this by 1 / sqrt(dot(this, this)); a zero vector becomes NaN.
  void normalize() noexcept { this->self() *= T(1) / length(); }
  /// A copy of this, normalized by normalize().
  V normalized() const noexcept {
    V v = this->self();
    v.normalize();
    return v;
  }

  /// this = (b - a) * t + a componentwise, in that order.
  void lerp(T t, const V& a, const V& b) noexcept {
    this->self() = zip(a, b, [t](T p, T q) { return (q - p) * t + p; });
  }

  /// ZE_MATH_PLANAR_REGION of (x, y); other components are ignored.
  ZE_MATH_PLANAR_REGION getQuadrant() const noexcept { return quadrantOf(this->self()[0], this->self()[1]); }

 private:
  template <class F>
  static V zip(const V& a, const V& b, F f) noexcept {
    V r;
#pragma GCC unroll 4
    for (int i = 0; i < N; ++i) r[i] = f(a[i], b[i]);
    return r;
  }
};

/// Operations of the 3-component float and double vectors. M is the matrix
/// of the same precision.
template <class V, class T, class M>
class Vec3Ops : public VecOps<V, T, 3> {
 public:
  /// this = a x b.
  void cross(const V& a, const V& b) noexcept {
    T x, y, z;
    crossXYZ(a, b, x, y, z);
    set(x, y, z);
  }
  /// this = this x b.
  void cross(const V& b) noexcept { cross(this->self(), b); }

  /// ZE_MATH_SPATIAL_REGION of (x, y, z).
  ZE_MATH_SPATIAL_REGION getOctant() const noexcept { return octantOf(this->self().x, this->self().y, this->self().z); }

  /// Unit normal of triangle (a, b, c): (c - b) x (a - b) times 1 / its length.
  /// A degenerate triangle gives NaN components.
  void makeNormal(const V& a, const V& b, const V& c) noexcept {
    V n;
    n.cross(c - b, a - b);
    const T scale = T(1) / std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    set(n.x * scale, n.y * scale, n.z * scale);
  }

  /// Reflection of v at a surface of normal n with bounce factor s:
  /// v unchanged when n.v > 0, else v - (s + 1)(n.v) n.
  void reflect(const V& n, const V& v, T s) noexcept {
    const T d = n.x * v.x + n.y * v.y + n.z * v.z;
    if (d > T(0)) {
      this->self() = v;
      return;
    }
    const T k = (s + T(1)) * d;
    set(v.x - k * n.x, v.y - k * n.y, v.z - k * n.z);
  }

  /// Direction transform by the upper-left 3x3 block of m (row vector on the left).
  void transformVector(const V& v, const M& m) noexcept {
    set(v.x * m[0] + v.y * m[4] + v.z * m[8], v.x * m[1] + v.y * m[5] + v.z * m[9],
        v.x * m[2] + v.y * m[6] + v.z * m[10]);
  }

  /// Projective point transform: (x, y, z, 1) times m, divided by w unless w is
  /// exactly 1; a |w| below the small threshold divides by +threshold instead.
  void transformPoint(const V& v, const M& m) noexcept {
    T x = v.x * m[0] + v.y * m[4] + v.z * m[8] + m[12];
    T y = v.x * m[1] + v.y * m[5] + v.z * m[9] + m[13];
    T z = v.x * m[2] + v.y * m[6] + v.z * m[10] + m[14];
    const T w = v.x * m[3] + v.y * m[7] + v.z * m[11] + m[15];
    if (w != T(1)) {
      // The sign of a tiny w is dropped on purpose: such a point keeps its side.
      const T divisor = std::fabs(w) < zeSmallThreshold<T> ? zeSmallThreshold<T> : w;
      const T inverse = T(1) / divisor;
      x = x * inverse;
      y = y * inverse;
      z = z * inverse;
    }
    set(x, y, z);
  }

 protected:
  /// this = (x, y, z).
  void set(T x, T y, T z) noexcept {
    V& r = this->self();
    r.x = x;
    r.y = y;
    r.z = z;
  }
};

/// Operations of the 4-component float and double vectors: x, y, z as in
/// 3-space, w the homogeneous coordinate.
template <class V, class T, class M>
class Vec4Ops : public VecOps<V, T, 4> {
 public:
  /// this = a x b over x, y, z; w becomes exactly 1.
  void cross(const V& a, const V& b) noexcept {
    T x, y, z;
    crossXYZ(a, b, x, y, z);
    set(x, y, z, T(1));
  }
  /// this = this x b over x, y, z; w becomes exactly 1.
  void cross(const V& b) noexcept { cross(this->self(), b); }

  /// ZE_MATH_SPATIAL_REGION of (x, y, z); w is ignored.
  ZE_MATH_SPATIAL_REGION getOctant() const noexcept { return octantOf(this->self().x, this->self().y, this->self().z); }

  /// Unit normal of triangle (a, b, c) over x, y, z, as the 3-vectors; w = 1.
  void makeNormal(const V& a, const V& b, const V& c) noexcept {
    const V n = normalDirection(a, b, c);
    const T scale = T(1) / std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    set(n.x * scale, n.y * scale, n.z * scale, T(1));
  }

  /// Reflection as the 3-vectors, the dot product over x, y, z only; the
  /// subtraction includes w: w' = v.w - k n.w.
  void reflect(const V& n, const V& v, T s) noexcept {
    const T d = n.x * v.x + n.y * v.y + n.z * v.z;
    if (d > T(0)) {
      this->self() = v;
      return;
    }
    const T k = (s + T(1)) * d;
    set(v.x - k * n.x, v.y - k * n.y, v.z - k * n.z, v.w - k * n.w);
  }

  /// Direction transform of x, y, z by the upper-left 3x3 block of m; w copied from v.
  void transformVector(const V& v, const M& m) noexcept {
    set(v.x * m[0] + v.y * m[4] + v.z * m[8], v.x * m[1] + v.y * m[5] + v.z * m[9],
        v.x * m[2] + v.y * m[6] + v.z * m[10], v.w);
  }

  /// Full product of the row vector (x, y, z, w) with m; no division.
  void transformPoint(const V& v, const M& m) noexcept {
    set(v.x * m[0] + v.y * m[4] + v.z * m[8] + v.w * m[12], v.x * m[1] + v.y * m[5] + v.z * m[9] + v.w * m[13],
        v.x * m[2] + v.y * m[6] + v.z * m[10] + v.w * m[14], v.x * m[3] + v.y * m[7] + v.z * m[11] + v.w * m[15]);
  }

 protected:
  /// (c - b) x (a - b) over x, y, z, w = 1: the unnormalised triangle normal.
  static V normalDirection(const V& a, const V& b, const V& c) noexcept {
    V n;
    n.cross(c - b, a - b);
    return n;
  }

  /// this = (x, y, z, w).
  void set(T x, T y, T z, T w) noexcept {
    V& r = this->self();
    r.x = x;
    r.y = y;
    r.z = z;
    r.w = w;
  }
};

/// Point at parameter t of the cubic Bezier curve p0..p3, by de Casteljau's
/// repeated lerp of V.
template <class V>
inline V bezier(float t, const V& p0, const V& p1, const V& p2, const V& p3) noexcept {
  V q0, q1, q2, r0, r1, out;
  q0.lerp(t, p0, p1);
  q1.lerp(t, p1, p2);
  q2.lerp(t, p2, p3);
  r0.lerp(t, q0, q1);
  r1.lerp(t, q1, q2);
  out.lerp(t, r0, r1);
  return out;
}

}  // namespace impl
}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
