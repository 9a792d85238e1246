#pragma once

/// \file
/// The culling loop one volume at a time: a volume against compact planes,
/// in the order of the plane's own box and sphere containment routines
/// (zePlane::zePlaneContainsAABox, zePlane::zePlaneContainsSphere), and the
/// combination of the planes' answers. Works on raw floats and lives in an
/// anonymous namespace, so the culling source and the instruction-set units
/// (math/isa/), some built for wider instructions, each keep their own copy.
/// Not installed, like the other loops.

#include <cstddef>

#include "math/volumes/impl/CullRawPaths.h"

namespace Lux {
namespace Math {
namespace impl {
namespace {

/// The results as bytes: ZE_MATH_CONTAINMENT_RESULTS_NONE, _PARTIAL, _ALL.
constexpr unsigned char kCullNone = 0;
constexpr unsigned char kCullPartial = 1;
constexpr unsigned char kCullAll = 2;

/// The plane's signed distance of (x, y, z): the products summed in x, y, z
/// order, then the offset taken off.
inline float cullDistance(const CullPlane& p, float x, float y, float z) {
  return p.normal[0] * x + p.normal[1] * y + p.normal[2] * z - p.offset;
}

/// Boxes: min x, y, z, then max x, y, z.
struct CullBoxes {
  static constexpr int kFloats = 6;
  /// NONE for an empty box (min.x > max.x, the one axis the routines test).
  /// Then ALL when the corner in the plane's octant, the one farthest along
  /// the normal, is inside (0 >= e); else PARTIAL when the corner in the
  /// complementary octant is; else NONE. A set octant bit (a negative axis)
  /// takes the min there.
  static unsigned char against(const CullPlane& p, const float* box) {
    if (box[0] > box[3]) return kCullNone;
    const float* lo = box;
    const float* hi = box + 3;
    const unsigned int o = p.octant;
    const float alongX = (o & 4) ? lo[0] : hi[0], againstX = (o & 4) ? hi[0] : lo[0];
    const float alongY = (o & 2) ? lo[1] : hi[1], againstY = (o & 2) ? hi[1] : lo[1];
    const float alongZ = (o & 1) ? lo[2] : hi[2], againstZ = (o & 1) ? hi[2] : lo[2];
    if (0.0f >= cullDistance(p, alongX, alongY, alongZ)) return kCullAll;
    if (0.0f >= cullDistance(p, againstX, againstY, againstZ)) return kCullPartial;
    return kCullNone;
  }
};

/// Spheres: centre x, y, z, then radius.
struct CullSpheres {
  static constexpr int kFloats = 4;
  /// NONE for a negative radius; with e the centre's signed distance, ALL
  /// when -r >= e, PARTIAL when r >= e, NONE otherwise (also for a NaN).
  static unsigned char against(const CullPlane& p, const float* sphere) {
    const float r = sphere[3];
    if (r < 0.0f) return kCullNone;
    const float e = cullDistance(p, sphere[0], sphere[1], sphere[2]);
    if (-r >= e) return kCullAll;
    if (r >= e) return kCullPartial;
    return kCullNone;
  }
};

/// `result` (ALL when there is nothing before) combined with the answers of
/// the planes in order: NONE as soon as one says NONE, PARTIAL when one says
/// PARTIAL. The answers are ordered NONE < PARTIAL < ALL, so that is the least.
template <class Kind>
inline unsigned char cullOne(const CullPlane* planes, unsigned int planeCount, const float* volume,
                             unsigned char result) {
  for (unsigned int j = 0; j < planeCount && result != kCullNone; ++j) {
    const unsigned char answer = Kind::against(planes[j], volume);
    if (answer < result) result = answer;
  }
  return result;
}

/// Volumes [begin, end) one at a time; see RawCull.
template <class Kind>
inline void cullEach(const float* volumes, std::size_t begin, std::size_t end, const CullPlane* planes,
                     unsigned int planeCount, const unsigned char* prior, unsigned char* results) {
  for (std::size_t i = begin; i < end; ++i)
    results[i] = cullOne<Kind>(planes, planeCount, volumes + Kind::kFloats * i, prior ? prior[i] : kCullAll);
}

}  // namespace
}  // namespace impl
}  // namespace Math
}  // namespace Lux
