#pragma once

/// \file
/// Whether the inline operations of the library give, in the caller's own
/// build, the bits the library gives. They are compiled in the program that
/// includes the headers, with its flags: the installed package passes what
/// they need (-ffp-contract=off), a build set up by hand may not.

#include "math/ZEMathExport.h"
#include "math/impl/ExactProbe.h"

namespace Lux {
namespace Math {

/// The families of inline operations that zeCheckExactResults() tries, one bit each.
enum ZE_MATH_EXACT_FAMILY : int {
  ZE_MATH_EXACT_FAMILY_VECTORS = 1,        ///< arithmetic, cross, lerp, normals, reflection, transforms, Bezier
  ZE_MATH_EXACT_FAMILY_MATRICES = 2,       ///< the 4x4 products, pre- and post-translation
  ZE_MATH_EXACT_FAMILY_QUATERNIONS = 4,    ///< quaternion multiply, invert and lerp
  ZE_MATH_EXACT_FAMILY_COLORS = 8,         ///< colour conversion from HSV
  ZE_MATH_EXACT_FAMILY_SCREEN_SPACE = 16,  ///< pixel and model diameters
  ZE_MATH_EXACT_FAMILY_VOLUMES = 32,       ///< the plane's signed distance
  ZE_MATH_EXACT_FAMILY_ALL = 63            ///< every family
};

/// Runs a few inline operations of every family twice on inputs where a
/// fused multiply-add or a reordered sum changes the last bits: compiled
/// here, in the caller's translation unit with the caller's flags, and as the
/// library computes them. Returns 0 when every result has the library's bits,
/// else the ZE_MATH_EXACT_FAMILY bits of the families that differ
/// (zeExactFamilyName names them). It takes microseconds, changes nothing
/// and needs no registration, so it can run first thing at start-up. Call
/// it from a file compiled like the rest of the program: it checks the flags
/// of the file it is compiled in.
inline unsigned int zeCheckExactResults() noexcept {
  const impl::ExactProbeInputs in = impl::loadExactProbeInputs();
  impl::ExactProbeResults here, library;
  impl::runExactProbe(in, here);
  impl::runExactProbeInLibrary(in, library);
  return impl::differingFamilies(here, library);
}

/// The name of one ZE_MATH_EXACT_FAMILY bit ("vectors", "matrices",
/// "quaternions", "colors", "screen-space", "volumes"); null for a value
/// that is not exactly one family.
ZEMATH_API const char* zeExactFamilyName(unsigned int family) noexcept;

}  // namespace Math
}  // namespace Lux
