#pragma once

#include "math/ZEMathExport.h"
#include "math/impl/ColourOps.h"
#include "math/impl/ExactOrder.h"
#include "math/impl/VecOps.h"
#include "math/zeVec3f.h"

ZEMATH_EXACT_ORDER_BEGIN
namespace Lux {
namespace Math {

class zeMatrix44f;

/// Four-component single-precision vector (x, y, z, w); w is the homogeneous
/// coordinate, 1 for a point and 0 for a direction.
class ZEMATH_API zeVec4f : public impl::Vec4Ops<zeVec4f, float, zeMatrix44f>, public impl::Colour4Ops<zeVec4f, float> {
 public:
  ///@{ The components.
  float x, y, z, w;
  ///@}

  /// Leaves the components uninitialised, as for the built-in types (a trivial constructor).
  zeVec4f() = default;
  /// The vector (x, y, z, w).
  constexpr zeVec4f(float x_, float y_, float z_, float w_) noexcept : x(x_), y(y_), z(z_), w(w_) {}

  using Vec4Ops::transformPoint;
  /// this = (v.x, v.y, v.z, 1) times m, all four components kept, no division.
  /// Only the float class has this form.
  void transformPoint(const zeVec3f& v, const zeMatrix44f& m) noexcept;

  /// Fills this with the pixel-to-model scale of the model-to-view transform
  /// `modelView`, the projection `projection` and a width x height viewport:
  /// a linear form whose value at a model-space point is the number of model
  /// units per pixel there. A zero viewport gives infinite or NaN components.
  void makePixelToModelScale(const zeMatrix44f& modelView, const zeMatrix44f& projection, int width,
                             int height) noexcept;
  /// modelDiameter / k(p): the size in pixels of a model-space diameter at p.
  float computePixelSpaceDiameter(const zeVec3f& p, float modelDiameter) const noexcept {
    return modelDiameter / unitsPerPixel(p);
  }
  /// pixelDiameter * k(p): the size in model units of a pixel diameter at p.
  float computeModelSpaceDiameter(const zeVec3f& p, float pixelDiameter) const noexcept {
    return pixelDiameter * unitsPerPixel(p);
  }

  /// Point at parameter t of the cubic Bezier curve p0..p3, w included
  /// (de Casteljau; the points are not modified).
  void bezierInterpolate(float t, zeVec4f& p0, zeVec4f& p1, zeVec4f& p2, zeVec4f& p3) noexcept {
    *this = impl::bezier(t, p0, p1, p2, p3);
  }

  static zeVec4f ZeroVector;  ///< (0, 0, 0, 0)
  static zeVec4f OneVector;   ///< (1, 1, 1, 1)
  static zeVec4f XVector;     ///< (1, 0, 0, 0)
  static zeVec4f YVector;     ///< (0, 1, 0, 0)
  static zeVec4f ZVector;     ///< (0, 0, 1, 0)
  static zeVec4f TVector;     ///< (0, 0, 0, 1)

 private:
  /// k(p) = ((x p.x + y p.y) + z p.z) + w, this being a pixel-to-model scale.
  float unitsPerPixel(const zeVec3f& p) const noexcept { return x * p.x + y * p.y + z * p.z + w; }
};

/// The dot product a.dot(b): every component, summed left to right.
inline float dot(const zeVec4f& a, const zeVec4f& b) noexcept { return a.dot(b); }
/// The cross product a x b over x, y, z (zeVec4f::cross(a, b)); w is 1.
inline zeVec4f cross(const zeVec4f& a, const zeVec4f& b) noexcept {
  zeVec4f r;
  r.cross(a, b);
  return r;
}
/// A copy of v normalized: v times 1 / sqrt(dot(v, v)).
inline zeVec4f normalized(const zeVec4f& v) noexcept { return v.normalized(); }

}  // namespace Math
}  // namespace Lux
ZEMATH_EXACT_ORDER_END
