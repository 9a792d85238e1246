#pragma once

// The demo's scene: a camera, its frustum as six planes, a field of random
// boxes and spheres, and the culling of each volume against the frustum. The
// demo and its test share this code so that both see the same scene.

#include <array>
#include <cstdint>
#include <vector>

#include <math/ZEMath.h>

namespace zedemo {

/// The viewport the demo's camera is made for, and the picture's size.
constexpr int kViewWidth = 960;
constexpr int kViewHeight = 720;
/// The seed of the default scene.
constexpr unsigned long long kDefaultSeed = 1;

/// A small, random generator defined to the bit (splitmix64), so that a seed
/// gives the same scene on every machine and standard library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : _state(seed) {}
  /// The next 64 random bits.
  std::uint64_t next();
  /// A float in [lo, hi), from the top 24 bits of next().
  float uniform(float lo, float hi);

 private:
  std::uint64_t _state;
};

/// The viewer: a look-at view, a perspective projection, their product and
/// the six planes of the view volume, each with its inside facing inward.
struct Camera {
  Lux::Math::zeMatrix44f view;
  Lux::Math::zeMatrix44f projection;
  Lux::Math::zeMatrix44f viewProjection;              ///< view, then projection
  Lux::zeSmartPointer<Lux::Math::zePlane> planes[6];  ///< left, right, bottom, top, near, far
  int width = 0;                                      ///< viewport the projection is meant for, in pixels
  int height = 0;
};

/// The default camera of the demo, for a width x height viewport.
Camera makeCamera(int width, int height);

/// Fills the six planes of `camera` from its view-projection matrix: the
/// clip-space conditions -w <= x <= w (and so on) read back in world space.
void makeFrustumPlanes(Camera& camera);

/// `count` random volumes, boxes at even positions and spheres at odd ones,
/// scattered around and beyond the camera's view.
std::vector<Lux::zeSmartPointer<Lux::Math::zeVolume>> makeVolumes(std::uint64_t seed, unsigned int count);

/// How much of `volume` lies in the view volume: NONE as soon as one plane
/// holds none of it, ALL when every plane holds all of it, else PARTIAL.
/// Every test runs through the dispatch tables.
Lux::Math::ZE_MATH_CONTAINMENT_RESULTS cullVolume(const Camera& camera, const Lux::Math::zeVolume* volume);

/// The camera's six planes as the batch culling kernels take them.
std::array<const Lux::Math::zePlane*, 6> frustumOf(const Camera& camera);

/// Volumes as the batch culling kernels take them: the boxes' values, the
/// spheres' values, and where each volume's answer lands.
struct VolumeValues {
  std::vector<Lux::Math::zeAABoxValue> boxes;
  std::vector<Lux::Math::zeSphereValue> spheres;
  /// Per volume: its box's index, or the number of boxes plus its sphere's index.
  std::vector<std::uint32_t> slots;
};

/// The values of `volumes`, each a zeAABox or a zeSphere (as makeVolumes makes them).
VolumeValues valuesOf(const std::vector<Lux::zeSmartPointer<Lux::Math::zeVolume>>& volumes);

/// Culls the values against the frustum through the published batch kernels
/// (zeCulling), each answer written to `results` in the volumes' order.
/// False when a kernel reports that it could not cull.
bool cullBatch(const Camera& camera, const VolumeValues& values, std::vector<unsigned char>& results);

/// A new, registered object of class T from the default pool.
template <class T>
Lux::zeSmartPointer<T> create() {
  return Lux::zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}

}  // namespace zedemo
