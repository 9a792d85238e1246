#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Two-component double-precision vector (x, y): texture coordinates, 2D points.
class ZEMATH_API zeVec2d : public impl::VecOps<zeVec2d, double, 2> {
 public:
  ///@{ The components.
  double x, y;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec2d() = default;
  /// The vector (x, y).
  constexpr zeVec2d(double x_, double y_) noexcept : x(x_), y(y_) {}

  static zeVec2d ZeroVector;  ///< (0, 0)
  static zeVec2d XVector;     ///< (1, 0)
  static zeVec2d YVector;     ///< (0, 1)
};

/// The dot product a.dot(b): every component, summed left to right.
inline double dot(const zeVec2d& a, const zeVec2d& b) noexcept { return a.dot(b); }
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec2d normalized(const zeVec2d& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
