// Builds a few transforms by hand, composes them and prints what they do to
// a handful of points: the smallest tour of the value types.

#include <cstdio>

#include <math/ZEMath.h>

using namespace Lux::Math;

namespace {

void printMatrix(const char* name, const zeMatrix44f& m) {
  std::printf("%s\n", name);
  for (int r = 0; r < 4; ++r) std::printf("  [%9.4f %9.4f %9.4f %9.4f]\n", m(r, 0), m(r, 1), m(r, 2), m(r, 3));
}

void printPoint(const char* name, const zeVec3f& p) { std::printf("  %-26s (%g, %g, %g)\n", name, p.x, p.y, p.z); }

}  // namespace

int main() {
  // Scale by 2, then turn a quarter about z (x -> y), then move by (10, 0, -5).
  const zeMatrix44f scale(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1);
  const zeMatrix44f quarterTurnZ(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  zeMatrix44f move = zeMatrix44f::identityMatrix;
  move(3, 0) = 10;
  move(3, 2) = -5;

  zeMatrix44f world;
  zeMatrix44f::matrixMultiply(&world, &scale, &quarterTurnZ);
  zeMatrix44f::matrixMultiply(&world, &world, &move);
  printMatrix("scale * quarter turn * move", world);

  zeVec3f points[3] = {zeVec3f::XVector, zeVec3f::YVector, zeVec3f(1, 1, 1)};
  zeVec3f moved[3];
  world.transformPoints(points, moved, 3);
  std::printf("points through it\n");
  printPoint("x axis point", moved[0]);
  printPoint("y axis point", moved[1]);
  printPoint("(1, 1, 1)", moved[2]);

  zeVec3f direction;
  direction.transformVector(zeVec3f::XVector, world);
  std::printf("directions ignore the translation\n");
  printPoint("x axis direction", direction);

  // A projective matrix divides by w; w = 2 halves the point.
  zeMatrix44f halve = zeMatrix44f::identityMatrix;
  halve(3, 3) = 2;
  zeVec3f projected;
  projected.transformPoint(zeVec3f(4, 6, 8), halve);
  std::printf("projective divide\n");
  printPoint("(4, 6, 8) with w = 2", projected);

  zeVec3f normal;
  normal.makeNormal(zeVec3f::ZeroVector, zeVec3f::XVector, zeVec3f::YVector);
  std::printf("triangle normal\n");
  printPoint("(0,0,0) (1,0,0) (0,1,0)", normal);

  std::printf("largest element of the world matrix: %g\n", world.getMaxElement());
  return 0;
}
