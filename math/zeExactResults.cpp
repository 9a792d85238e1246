#include "math/zeExactResults.h"

namespace Lux {
namespace Math {

static_assert(ZE_MATH_EXACT_FAMILY_ALL == (1 << impl::kExactFamilyCount) - 1, "one bit per family of the probe");

namespace impl {

// flatten inlines every call of the probe here: the library exports some
// inline members (those of its explicitly instantiated mixins), and a program
// that carries its own copies of them would otherwise stand in for them.
__attribute__((flatten)) void runExactProbeInLibrary(const ExactProbeInputs& in, ExactProbeResults& out) noexcept {
  runExactProbe(in, out);
}

}  // namespace impl

const char* zeExactFamilyName(unsigned int family) noexcept {
  static const char* const kNames[impl::kExactFamilyCount] = {"vectors", "matrices",     "quaternions",
                                                              "colors",  "screen-space", "volumes"};
  for (int i = 0; i < impl::kExactFamilyCount; ++i)
    if (family == 1u << i) return kNames[i];
  return nullptr;
}

}  // namespace Math
}  // namespace Lux
