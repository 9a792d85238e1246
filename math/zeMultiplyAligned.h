#pragma once

#include "math/ZEMathExport.h"

namespace Lux {

/// Reserved hook for an aligned matrix-multiply routine; does nothing.
/// The library's initialisation entry calls it once.
ZEMATH_API void registerMultiplyAlignedFunction();

}  // namespace Lux
