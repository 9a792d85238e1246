#include "core/zeResult.h"

namespace Lux {

// Three outcomes must stay distinguishable: success, failure, and the plain 0
// that some routines return for "nothing done".
const int kSuccess = 1;
const int kFailure = -1;

}  // namespace Lux
