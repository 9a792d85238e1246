#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;

/// Grows volume a to enclose volume b.
typedef void (*zeExtendByFunction)(zeVolume* a, const zeVolume* b);

/// Dispatch table of extensions by a volume, one entry per ordered pair of volume types.
class ZEMATH_API zeExtendByFunctionList : public zeTDataList<zeExtendByFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeExtendByFunctionList, zeExtendByFunction)
};

}  // namespace Math
}  // namespace Lux
