#pragma once

/// \file
/// Culling many volumes against a set of planes (a view frustum, say) in one
/// call. Each result is what testing each plane's `contains` through the
/// dispatch tables gives for an object holding the volume's values, combined:
/// NONE as soon as one plane says NONE, PARTIAL if any says PARTIAL, else ALL.
/// The volumes are plain values, the planes the library's zePlane volumes;
/// each result is one byte holding a ZE_MATH_CONTAINMENT_RESULTS value.

#include "math/ZEMathExport.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

class zePlane;

/// The values of an axis-aligned box (zeAABox's `_min` and `_max`), held by
/// value; 24 bytes. Empty when min.x > max.x, as for zeAABox.
struct zeAABoxValue {
  zeVec3f min;  ///< lowest corner
  zeVec3f max;  ///< highest corner
};

/// The values of a sphere (zeSphere's `_center` and `_radius`), held by
/// value; 16 bytes. Empty when the radius is negative, as for zeSphere.
struct zeSphereValue {
  zeVec3f center;  ///< centre
  float radius;    ///< radius
};

/// Writes to results[i] how much of boxes[i] lies inside all `planeCount`
/// planes: exactly what zePlane's `contains` through the dispatch tables says
/// for a zeAABox holding those values, combined over the planes in order.
/// With no planes every result is ALL. Takes the vector path the processor
/// runs (math/zeInstructionSet.h); when some plane's (plane, box) entry of
/// the containment table holds another routine than the library's
/// zePlane::zePlaneContainsAABox, every volume is dispatched instead, through
/// one zeAABox made for the call. False, with nothing written, only when that
/// box cannot be made; true otherwise. Results that share bytes with the
/// boxes, the plane array or a plane get what the volume-by-volume loop gives.
/// Reentrant while the library's routines serve: calls on several threads
/// only read the planes and the tables. Making the box uses the default
/// memory pool, which belongs to one thread (README, "Invalid input and
/// threads").
ZEMATH_API bool cullAABoxes(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes,
                            unsigned int planeCount, unsigned char* results);

/// cullAABoxes for spheres: the library's routine is
/// zePlane::zePlaneContainsSphere, and a zeSphere is made for a dispatched call.
ZEMATH_API bool cullSpheres(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                            unsigned int planeCount, unsigned char* results);

/// Publishes the culling kernels: callers go through the two pointers, which
/// hold cullAABoxes and cullSpheres from the moment the library is loaded
/// (no registration needed), and an application may install its own. Not a
/// registered class; it only holds the pointers.
class ZEMATH_API zeCulling {
 public:
  /// A kernel with the arguments of cullAABoxes.
  typedef bool (*CullAABoxesFunction)(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes,
                                      unsigned int planeCount, unsigned char* results);
  /// A kernel with the arguments of cullSpheres.
  typedef bool (*CullSpheresFunction)(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                                      unsigned int planeCount, unsigned char* results);

  /// The box kernel; cullAABoxes unless replaced.
  static CullAABoxesFunction _cullAABoxesFunction;
  /// The sphere kernel; cullSpheres unless replaced.
  static CullSpheresFunction _cullSpheresFunction;

  zeCulling() = delete;
};

}  // namespace Math
}  // namespace Lux
