// Uses an installed ZEMath for its math alone: no core symbol, no
// registration. Linked with --as-needed, the program itself does not need
// libLuxCore, so it starts only when libZEMath finds its sibling by itself.

#include <cstdio>

#include <math/zeMatrix44f.h>

using namespace Lux::Math;

int main() {
  zeMatrix44f m;
  m.makeRotationRadians(1.5707964f, zeVec3f::ZVector);  // out of line, in libZEMath
  m.postTranslation(zeVec3f(0, 0, 5));
  zeVec3f p;
  p.transformPoint(zeVec3f::XVector, m);
  const bool ok = p.x * p.x < 1e-12f && p.y == 1.0f && p.z == 5.0f;
  std::printf("%s: x turned a quarter about z and moved along z: (%g, %g, %g)\n", ok ? "ok" : "FAIL", p.x, p.y, p.z);
  return ok ? 0 : 1;
}
