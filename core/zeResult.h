#pragma once

#include "core/LuxCoreExport.h"

namespace Lux {

/// Result of a fallible operation that succeeded. Differs from 0 and from kFailure.
LUXCORE_API extern const int kSuccess;

/// Result of a fallible operation that failed. Differs from 0.
LUXCORE_API extern const int kFailure;

}  // namespace Lux
