#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zeMatrix44d;

/// Three-component double-precision vector (x, y, z).
class ZEMATH_API zeVec3d : public impl::Vec3Ops<zeVec3d, double, zeMatrix44d>,
                           public impl::Colour3Ops<zeVec3d, double> {
 public:
  ///@{ The components.
  double x, y, z;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec3d() = default;
  /// The vector (x, y, z).
  constexpr zeVec3d(double x_, double y_, double z_) noexcept : x(x_), y(y_), z(z_) {}

  static zeVec3d ZeroVector;  ///< (0, 0, 0)
  static zeVec3d OneVector;   ///< (1, 1, 1)
  static zeVec3d XVector;     ///< (1, 0, 0)
  static zeVec3d YVector;     ///< (0, 1, 0)
  static zeVec3d ZVector;     ///< (0, 0, 1)
};

/// The dot product a.dot(b): every component, summed left to right.
inline double dot(const zeVec3d& a, const zeVec3d& b) noexcept { return a.dot(b); }
/// The cross product a x b over x, y, z (zeVec3d::cross(a, b)).
inline zeVec3d cross(const zeVec3d& a, const zeVec3d& b) noexcept {
  zeVec3d r;
  r.cross(a, b);
  return r;
}
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec3d normalized(const zeVec3d& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
