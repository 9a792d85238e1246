#include "DemoFraming.h"

#include <algorithm>
#include <cmath>

using namespace Lux::Math;

namespace zedemo {

void meshBounds(const zeVec3f* points, unsigned int count, zeAABox& box) {
  box.empty();
  box.extendBy(points, static_cast<int>(count));
}

Camera frameCamera(const zeVec3f& lo, const zeVec3f& hi, int upAxis, float upSign, int width, int height) {
  zeVec3f centre, half, up(0, 0, 0), front(0, 0, 0), side(0, 0, 0);
  centre.lerp(0.5f, lo, hi);
  half = zeVec3f(hi.x - centre.x, hi.y - centre.y, hi.z - centre.z);
  const float radius = std::max(std::sqrt(half.dot(half)), 1e-3f);
  up[upAxis] = upSign;
  front[(upAxis + 1) % 3] = upSign;
  side[(upAxis + 2) % 3] = upSign;
  zeVec3f direction(front.x + 0.6f * side.x + 0.3f * up.x, front.y + 0.6f * side.y + 0.3f * up.y,
                    front.z + 0.6f * side.z + 0.3f * up.z);
  direction.normalize();
  const float fovY = 0.6981317f;  // 40 degrees
  const float aspect = float(width) / float(height);
  const float narrowest = std::min(fovY, 2.0f * std::atan(std::tan(0.5f * fovY) * aspect));
  const float distance = 1.05f * radius / std::sin(0.5f * narrowest);
  const zeVec3f eye(centre.x + distance * direction.x, centre.y + distance * direction.y,
                    centre.z + distance * direction.z);
  Camera camera;
  camera.width = width;
  camera.height = height;
  camera.view.makeLookAt(eye, centre, up);
  camera.projection.makePerspectiveProjectionRadians(
      -1.0f, fovY, aspect, std::max(distance - 2.0f * radius, 0.01f * radius), distance + 2.0f * radius);
  zeMatrix44f::matrixMultiply(&camera.viewProjection, &camera.view, &camera.projection);
  makeFrustumPlanes(camera);
  return camera;
}

}  // namespace zedemo
