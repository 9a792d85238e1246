// Builds a few transforms, composes them, inverts and decomposes the result,
// and blends two rotations: a short tour of the value types.

#include <cstdio>

#include <math/ZEMath.h>

using namespace Lux::Math;

namespace {

void printMatrix(const char* name, const zeMatrix44f& m) {
  std::printf("%s\n", name);
  for (int r = 0; r < 4; ++r) std::printf("  [%9.4f %9.4f %9.4f %9.4f]\n", m(r, 0), m(r, 1), m(r, 2), m(r, 3));
}

void printVector(const char* name, const zeVec3f& p) { std::printf("  %-28s (%g, %g, %g)\n", name, p.x, p.y, p.z); }

}  // namespace

int main() {
  const float quarterTurn = 1.5707964f;

  // Scale by 2, then turn a quarter about z, then move by (10, 0, -5):
  // row vectors on the left, so the first transform applied comes first.
  zeMatrix44f scale, turn, move, world;
  scale.makeScale(2.0f);
  turn.makeRotationRadians(quarterTurn, zeVec3f::ZVector);
  move.makeTranslation(zeVec3f(10, 0, -5));
  zeMatrix44f::matrixMultiply(&world, &scale, &turn);
  zeMatrix44f::matrixMultiply(&world, &world, &move);
  printMatrix("scale(2) * turn(z, 90 deg) * move(10, 0, -5)", world);

  zeVec3f points[3] = {zeVec3f::XVector, zeVec3f::YVector, zeVec3f(1, 1, 1)};
  world.transformPoints(points, points, 3);
  std::printf("points through it\n");
  printVector("x axis point", points[0]);
  printVector("y axis point", points[1]);
  printVector("(1, 1, 1)", points[2]);

  zeMatrix44f inverse;
  if (inverse.invert(world) == Lux::kSuccess) {
    zeVec3f back;
    back.transformPoint(points[0], inverse);
    std::printf("the inverse takes the x axis point back\n");
    printVector("x axis point again", back);
  }

  float parts[12];
  zeMatrix44f decomposed = world;
  if (decomposed.decomposeMatrixRadians(decomposed, parts) == Lux::kSuccess) {
    std::printf("decomposed\n");
    printVector("translation", zeVec3f(parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_X],
                                       parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Y],
                                       parts[ZE_MATH_MATRIX_DECOMPOSITION_TRANSLATE_Z]));
    printVector("rotation (radians)",
                zeVec3f(parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Y],
                        parts[ZE_MATH_MATRIX_DECOMPOSITION_ROTATE_Z]));
    printVector("scale",
                zeVec3f(parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_X], parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Y],
                        parts[ZE_MATH_MATRIX_DECOMPOSITION_SCALE_Z]));
  }

  // Half way between no turn and a quarter turn about z is an eighth turn.
  zeQuaternionf from, to, between;
  from.setRotationRadians(0, 0, 0);
  to.setRotationRadians(0, 0, quarterTurn);
  between.slerp(0.5f, from, to);
  float rx, ry, rz;
  between.getRotationRadians(rx, ry, rz);
  std::printf("slerp half way from 0 to 90 degrees about z\n");
  printVector("Euler angles (radians)", zeVec3f(rx, ry, rz));
  return 0;
}
