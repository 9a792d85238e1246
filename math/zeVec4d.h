#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zeMatrix44d;

/// Four-component double-precision vector (x, y, z, w).
class ZEMATH_API zeVec4d : public impl::Vec4Ops<zeVec4d, double, zeMatrix44d>,
                           public impl::Colour4Ops<zeVec4d, double> {
 public:
  ///@{ The components.
  double x, y, z, w;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec4d() = default;
  /// The vector (x, y, z, w).
  constexpr zeVec4d(double x_, double y_, double z_, double w_) noexcept : x(x_), y(y_), z(z_), w(w_) {}

  /// Triangle normal direction (c - b) x (a - b), w = 1. Unlike its twins the
  /// double 4-vector divides by 1 / length on purpose, so the result is the
  /// direction times its own length, not a unit vector; a degenerate triangle
  /// gives zeros (0 divided by infinity).
  void makeNormal(const zeVec4d& a, const zeVec4d& b, const zeVec4d& c) noexcept {
    const zeVec4d n = normalDirection(a, b, c);
    const double scale = 1.0 / std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    set(n.x / scale, n.y / scale, n.z / scale, 1.0);
  }

  static zeVec4d ZeroVector;  ///< (0, 0, 0, 0)
  static zeVec4d OneVector;   ///< (1, 1, 1, 1)
  static zeVec4d XVector;     ///< (1, 0, 0, 0)
  static zeVec4d YVector;     ///< (0, 1, 0, 0)
  static zeVec4d ZVector;     ///< (0, 0, 1, 0)
  static zeVec4d TVector;     ///< (0, 0, 0, 1)
};

/// The dot product a.dot(b): every component, summed left to right.
inline double dot(const zeVec4d& a, const zeVec4d& b) noexcept { return a.dot(b); }
/// The cross product a x b over x, y, z (zeVec4d::cross(a, b)); w is 1.
inline zeVec4d cross(const zeVec4d& a, const zeVec4d& b) noexcept {
  zeVec4d r;
  r.cross(a, b);
  return r;
}
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec4d normalized(const zeVec4d& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
