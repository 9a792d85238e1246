#include "DemoScene.h"

#include <cmath>

using namespace Lux;
using namespace Lux::Math;

namespace zedemo {

std::uint64_t Random::next() {
  std::uint64_t z = (_state += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

float Random::uniform(float lo, float hi) {
  const float unit = static_cast<float>(next() >> 40) * (1.0f / 16777216.0f);
  return lo + (hi - lo) * unit;
}

Camera makeCamera(int width, int height) {
  Camera camera;
  camera.width = width;
  camera.height = height;
  camera.view.makeLookAt(zeVec3f(0, 4, 24), zeVec3f(0, 0, 0), zeVec3f::YVector);
  const float fovY = 0.87266463f;  // 50 degrees
  camera.projection.makePerspectiveProjectionRadians(-1.0f, fovY, float(width) / float(height), 1.0f, 60.0f);
  zeMatrix44f::matrixMultiply(&camera.viewProjection, &camera.view, &camera.projection);
  makeFrustumPlanes(camera);
  return camera;
}

void makeFrustumPlanes(Camera& camera) {
  const zeMatrix44f& m = camera.viewProjection;
  // Clip component j of a point p is p·column j + m(3, j). The condition
  // s * clip_j <= w is a half-space c·p + d <= 0, which is the inside of the
  // plane with normal c / |c| and offset -d / |c|.
  int k = 0;
  for (int j = 0; j < 3; ++j) {
    for (float s : {-1.0f, 1.0f}) {
      const zeVec3f c(s * m(0, j) - m(0, 3), s * m(1, j) - m(1, 3), s * m(2, j) - m(2, 3));
      const float d = s * m(3, j) - m(3, 3);
      const float length = std::sqrt(c.x * c.x + c.y * c.y + c.z * c.z);
      camera.planes[k] = create<zePlane>();
      camera.planes[k]->create(c, -d / length);
      ++k;
    }
  }
}

std::vector<zeSmartPointer<zeVolume>> makeVolumes(std::uint64_t seed, unsigned int count) {
  Random random(seed);
  std::vector<zeSmartPointer<zeVolume>> volumes;
  volumes.reserve(count);
  for (unsigned int i = 0; i < count; ++i) {
    const zeVec3f centre(random.uniform(-45, 45), random.uniform(-14, 20), random.uniform(-75, 20));
    const float size = random.uniform(0.3f, 1.8f);
    if (i % 2 == 0) {
      zeSmartPointer<zeAABox> box = create<zeAABox>();
      const zeVec3f half(size, size * random.uniform(0.5f, 1.5f), size * random.uniform(0.5f, 1.5f));
      box->_min = zeVec3f(centre.x - half.x, centre.y - half.y, centre.z - half.z);
      box->_max = zeVec3f(centre.x + half.x, centre.y + half.y, centre.z + half.z);
      volumes.emplace_back(box);
    } else {
      zeSmartPointer<zeSphere> sphere = create<zeSphere>();
      sphere->_center = centre;
      sphere->_radius = size;
      volumes.emplace_back(sphere);
    }
  }
  return volumes;
}

ZE_MATH_CONTAINMENT_RESULTS cullVolume(const Camera& camera, const zeVolume* volume) {
  ZE_MATH_CONTAINMENT_RESULTS result = ZE_MATH_CONTAINMENT_RESULTS_ALL;
  for (const zeSmartPointer<zePlane>& plane : camera.planes) {
    const ZE_MATH_CONTAINMENT_RESULTS r = plane->contains(volume);
    if (r == ZE_MATH_CONTAINMENT_RESULTS_NONE) return r;
    if (r == ZE_MATH_CONTAINMENT_RESULTS_PARTIAL) result = r;
  }
  return result;
}

std::array<const zePlane*, 6> frustumOf(const Camera& camera) {
  std::array<const zePlane*, 6> planes;
  for (int k = 0; k < 6; ++k) planes[k] = camera.planes[k].get();
  return planes;
}

VolumeValues valuesOf(const std::vector<zeSmartPointer<zeVolume>>& volumes) {
  VolumeValues values;
  std::vector<std::uint32_t> sphereAt;  // the volumes that are spheres, by position
  for (std::uint32_t i = 0; i < volumes.size(); ++i) {
    const zeMetaObject* meta = volumes[i]->getMetaObject();
    if (meta == zeAABox::getClassMeta()) {
      const zeAABox& box = *static_cast<const zeAABox*>(volumes[i].get());
      values.slots.push_back(static_cast<std::uint32_t>(values.boxes.size()));
      values.boxes.push_back({box._min, box._max});
    } else if (meta == zeSphere::getClassMeta()) {
      const zeSphere& sphere = *static_cast<const zeSphere*>(volumes[i].get());
      sphereAt.push_back(static_cast<std::uint32_t>(values.slots.size()));
      values.slots.push_back(static_cast<std::uint32_t>(values.spheres.size()));
      values.spheres.push_back({sphere._center, sphere._radius});
    }
  }
  // The spheres' answers follow the boxes'.
  for (std::uint32_t at : sphereAt) values.slots[at] += static_cast<std::uint32_t>(values.boxes.size());
  return values;
}

bool cullBatch(const Camera& camera, const VolumeValues& values, std::vector<unsigned char>& results) {
  const std::array<const zePlane*, 6> planes = frustumOf(camera);
  const unsigned int boxes = static_cast<unsigned int>(values.boxes.size());
  std::vector<unsigned char> answers(values.boxes.size() + values.spheres.size());
  if (!zeCulling::_cullAABoxesFunction(values.boxes.data(), boxes, planes.data(), 6, answers.data())) return false;
  if (!zeCulling::_cullSpheresFunction(values.spheres.data(), static_cast<unsigned int>(values.spheres.size()),
                                       planes.data(), 6, answers.data() + boxes))
    return false;
  results.resize(values.slots.size());
  for (std::size_t i = 0; i < values.slots.size(); ++i) results[i] = answers[values.slots[i]];
  return true;
}

}  // namespace zedemo
