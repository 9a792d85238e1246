// Uses an installed ZEMath: loads it through the core, registers its classes
// and checks a few results. Prints what failed and exits non-zero on failure.

#include <cstdio>
#include <cstring>

#include <math/ZEMath.h>

using namespace Lux;
using namespace Lux::Math;

namespace {

int failures = 0;

void check(bool ok, const char* what) {
  std::printf("%s %s\n", ok ? "ok  " : "FAIL", what);
  if (!ok) ++failures;
}

unsigned int typeIndexOf(const char* name) {
  const zeMetaObject* meta = zeMetaObject::find(name);
  return meta ? zeVolume::getTypeIndex(meta) : ~0u;
}

}  // namespace

int main() {
  check(zeCheckExactResults() == 0, "the inline operations give the library's bits in this build");
  check(std::strcmp(ZEMATH_VERSION_STRING, ZE_FOUND_VERSION) == 0, "the header's version is the package's");

  zeSmartPointer<zeLibrary> library = zeLibrary::load(ZE_LIBRARY_PATH);
  check(static_cast<bool>(library), "the core loads the library");
  if (!library) return 1;
  check(library->registerClasses() == kSuccess, "the library registers its classes");
  library = nullptr;

  check(zeMetaObject::find("zeVectorBlending") != nullptr, "the kernels are registered");
  check(typeIndexOf("zeSphere") == 0u && typeIndexOf("zeAABox") == 1u && typeIndexOf("zePlane") == 2u,
        "the volumes have their type indices");

  // Row vectors: scale first, then move.
  zeMatrix44f scale, move, world;
  scale.makeScale(2.0f);
  move.makeTranslation(zeVec3f(10, 0, -5));
  zeMatrix44f::matrixMultiply(&world, &scale, &move);
  zeVec3f p;
  p.transformPoint(zeVec3f(1, 2, 3), world);
  check(p.x == 12.0f && p.y == 4.0f && p.z == 1.0f, "a point goes through scale then move");

  zeMatrix44f inverse;
  check(inverse.invert(world) == kSuccess, "the transform inverts");
  zeVec3f back;
  back.transformPoint(p, inverse);
  check(back.x == 1.0f && back.y == 2.0f && back.z == 3.0f, "the inverse brings the point back");

  std::printf("%s\n", failures == 0 ? "all checks passed" : "some checks failed");
  return failures == 0 ? 0 : 1;
}
