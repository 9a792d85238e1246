#include "math/meta/zeLibZEMathInit.h"

#include "core/BayCore.h"
#include "math/kernels/zeVectorBlending.h"
#include "math/kernels/zeVectorMorphing.h"
#include "math/zeMultiplyAligned.h"

namespace Lux {

unsigned char _libZEMath_InitFlag = 0;

namespace {
// When the core drops every class, the next registration must run the
// library's own registrations again.
void clearInitFlag() { _libZEMath_InitFlag = 0; }
}  // namespace

void _libZEMath_Init() {
  if (_libZEMath_InitFlag == 1) return;
  _libZEMath_InitFlag = 1;
  BayCore::registerUnregistrationHook(&clearInitFlag);
  Math::zeVectorMorphing::bayRegister();
  Math::zeVectorBlending::bayRegister();
  registerMultiplyAlignedFunction();
}

}  // namespace Lux
