#pragma once

/// \file
/// The culling paths on raw memory: a box is 6 floats (min x, y, z, then max
/// x, y, z), a sphere 4 (centre x, y, z, then radius), a result one byte
/// holding a ZE_MATH_CONTAINMENT_RESULTS value (0 none, 1 partial, 2 all).
/// The planes come read once, in the compact form below. Declared without
/// the library's types so that the units built for wider instructions
/// include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

/// The most planes one pass tests; more take further passes, each starting
/// from the results so far.
constexpr unsigned int kCullPassPlanes = 16;

/// A plane as the culling loops read it: the fields of a zePlane, with an
/// octant outside 1 to 7 already taken as 0, as its box routine takes it.
struct CullPlane {
  float normal[3];
  float offset;
  unsigned int octant;
};

/// A pass over `count` volumes (boxes or spheres, by kernel) against
/// `planeCount` (at most kCullPassPlanes) planes. Without `prior`, each
/// result is the combination of the planes' answers; with it, of prior[i]
/// and the planes' answers. `prior` may be `results`.
typedef void (*RawCull)(const float* volumes, unsigned int count, const CullPlane* planes, unsigned int planeCount,
                        const unsigned char* prior, unsigned char* results);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
