#include "math/zeVec4f.h"

#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

void zeVec4f::transformPoint(const zeVec3f& v, const zeMatrix44f& m) noexcept {
  x = v.x * m[0] + v.y * m[4] + v.z * m[8] + m[12];
  y = v.x * m[1] + v.y * m[5] + v.z * m[9] + m[13];
  z = v.x * m[2] + v.y * m[6] + v.z * m[10] + m[14];
  w = v.x * m[3] + v.y * m[7] + v.z * m[11] + m[15];
}

void zeVec4f::makePixelToModelScale(const zeMatrix44f& modelView, const zeMatrix44f& projection, int width,
                                    int height) noexcept {
  const zeMatrix44f& M = modelView;
  const zeMatrix44f& P = projection;
  const float W = static_cast<float>(width);
  const float H = static_cast<float>(height);

  // One pixel step along the screen's x and y directions, in model space.
  const float sx = P[0] * 0.5f * W;
  const float cx = P[8] * 0.5f * W + W * (P[11] * 0.5f);
  const zeVec3f stepX(sx * M[0] + cx * M[2], sx * M[4] + cx * M[6], sx * M[8] + cx * M[10]);
  const float sy = P[5] * 0.5f * H;
  const float cy = 0.5f * P[9] * H + H * (P[11] * 0.5f);
  const zeVec3f stepY(sy * M[1] + cy * M[2], sy * M[5] + cy * M[6], sy * M[9] + cy * M[10]);
  const float lx = stepX.length();
  const float ly = stepY.length();
  const float largest = lx > ly ? lx : ly;  // a tie or a NaN lx takes ly

  // The projected w of a point, per pixel of the larger step.
  const float r = 1.0f / largest;
  x = P[11] * M[2] * r;
  y = M[6] * P[11] * r;
  z = M[10] * P[11] * r;
  w = (M[14] * P[11] + P[15] * M[15]) * r;
}

}  // namespace Math
}  // namespace Lux
