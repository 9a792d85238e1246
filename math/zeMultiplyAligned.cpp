#include "math/zeMultiplyAligned.h"

namespace Lux {

void registerMultiplyAlignedFunction() {}

}  // namespace Lux
