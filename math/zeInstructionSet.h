#pragma once

/// \file
/// Which instruction set the vector paths run on. The skinning, morphing and
/// culling kernels and the matrices' array transforms each have a family of
/// paths, one per instruction set, that all give the bits of the plain scalar
/// loop.
/// Each family runs the widest path that the processor runs and that the cap
/// allows. The cap is the narrower of the environment variable `ZEMATH_ISA`
/// (`scalar`, `sse2`, `avx2` or `avx512`, any case; read once, the first time
/// the library needs the cap; any other value, or none, sets no cap) and the
/// one set by zeSetInstructionSetCap.

#include "math/ZEMathExport.h"

namespace Lux {
namespace Math {

/// The instruction sets the vector paths are built for, narrowest first.
enum ZE_MATH_INSTRUCTION_SET : int {
  ZE_MATH_INSTRUCTION_SET_SCALAR = 0,  ///< the plain scalar loops
  ZE_MATH_INSTRUCTION_SET_SSE2 = 1,    ///< SSE2, which every x86-64 processor has
  ZE_MATH_INSTRUCTION_SET_AVX2 = 2,    ///< AVX and AVX2, with the operating system saving their registers
  ZE_MATH_INSTRUCTION_SET_AVX512 = 3   ///< AVX-512 F, VL, BW and DQ, with their registers saved likewise
};

/// The families of vector paths; each chooses its path on its own.
enum ZE_MATH_PATH_FAMILY : int {
  ZE_MATH_PATH_FAMILY_SKINNING = 0,          ///< indexedBlendAligned4Vectors and its one-weight twin
  ZE_MATH_PATH_FAMILY_MORPHING = 1,          ///< morphNonAligned
  ZE_MATH_PATH_FAMILY_ARRAY_TRANSFORMS = 2,  ///< transformVectors and transformPoints of both matrix classes
  ZE_MATH_PATH_FAMILY_CULLING = 3            ///< cullAABoxes and cullSpheres
};

/// The widest instruction set that this processor and its operating system
/// run, detected once.
ZEMATH_API ZE_MATH_INSTRUCTION_SET zeProcessorInstructionSet() noexcept;

/// The cap in force: the narrower of `ZEMATH_ISA` and zeSetInstructionSetCap;
/// ZE_MATH_INSTRUCTION_SET_AVX512 when neither narrows.
ZEMATH_API ZE_MATH_INSTRUCTION_SET zeInstructionSetCap() noexcept;

/// Caps the instruction set of every family from code (`ZEMATH_ISA` still
/// holds where it is narrower); ZE_MATH_INSTRUCTION_SET_AVX512 lifts this cap.
/// Takes effect at each family's next call, and every path gives the same
/// bits; call it at start-up, before kernels run on other threads. False,
/// and nothing changes, for a value outside the enum.
ZEMATH_API bool zeSetInstructionSetCap(ZE_MATH_INSTRUCTION_SET cap) noexcept;

/// "scalar", "sse2", "avx2" or "avx512": the names `ZEMATH_ISA` takes; null
/// for a value outside the enum.
ZEMATH_API const char* zeInstructionSetName(ZE_MATH_INSTRUCTION_SET level) noexcept;

/// The name of the path a family runs now, such as "avx2"; a path that mixes
/// instruction sets says so in parentheses after the widest. Null for a value
/// outside the enum.
ZEMATH_API const char* zePathName(ZE_MATH_PATH_FAMILY family) noexcept;

/// The instruction set of the path a family runs now: the widest of its paths
/// that the processor runs within the cap. ZE_MATH_INSTRUCTION_SET_SCALAR for
/// a value outside the enum.
ZEMATH_API ZE_MATH_INSTRUCTION_SET zePathInstructionSet(ZE_MATH_PATH_FAMILY family) noexcept;

}  // namespace Math
}  // namespace Lux
