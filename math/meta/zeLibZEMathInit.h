#pragma once

#include "math/ZEMathExport.h"

namespace Lux {

/// The library's one-time registration step, run first by every class's
/// bayRegisterInternal: the first call sets the once-flag, registers
/// zeVectorMorphing and zeVectorBlending (in that order) and calls the
/// aligned-multiply hook; later calls return at once. Unregistering all
/// classes clears the flag again.
ZEMATH_API void _libZEMath_Init();

/// The once-flag of _libZEMath_Init: 0 until it has run, then 1.
ZEMATH_API extern unsigned char _libZEMath_InitFlag;

}  // namespace Lux
