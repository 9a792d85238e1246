// Objects of registered classes are made by their class descriptor only. The
// test suite compiles this file four times: as it stands, where it must
// compile, and with ZE_MISUSE set to 1 (an object on the stack), 2 (an
// object from new) or 3 (from the global new), where the compiler must refuse
// it and say why.

#include <core/zeCreate.h>
#include <math/volumes/zeSphere.h>

using namespace Lux;
using namespace Lux::Math;

int main() {
#if ZE_MISUSE == 1
  zeSphere sphere;
  sphere._radius = 1.0f;
  return sphere.isEmpty() ? 1 : 0;
#elif ZE_MISUSE == 2
  zeSphere* sphere = new zeSphere;
  return sphere->isEmpty() ? 1 : 0;
#elif ZE_MISUSE == 3
  zeSphere* sphere = ::new zeSphere;
  return sphere->isEmpty() ? 1 : 0;
#else
  zeSmartPointer<zeSphere> sphere = zeCreate<zeSphere>();
  return sphere && !sphere->isEmpty() ? 1 : 0;
#endif
}
