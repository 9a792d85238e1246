#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

/// Two-component single-precision vector (x, y): texture coordinates, 2D points.
class ZEMATH_API zeVec2f : public impl::VecOps<zeVec2f, float, 2> {
 public:
  ///@{ The components.
  float x, y;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec2f() = default;
  /// The vector (x, y).
  constexpr zeVec2f(float x_, float y_) noexcept : x(x_), y(y_) {}

  static zeVec2f ZeroVector;  ///< (0, 0)
  static zeVec2f XVector;     ///< (1, 0)
  static zeVec2f YVector;     ///< (0, 1)
};

/// The dot product a.dot(b): every component, summed left to right.
inline float dot(const zeVec2f& a, const zeVec2f& b) noexcept { return a.dot(b); }
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec2f normalized(const zeVec2f& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
