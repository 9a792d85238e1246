#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;

/// Makes the volume enclose nothing.
typedef void (*zeEmptyFunction)(zeVolume* volume);

/// Dispatch table of emptying routines, one entry per volume type.
class ZEMATH_API zeEmptyFunctionList : public zeTDataList<zeEmptyFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeEmptyFunctionList, zeEmptyFunction)
};

}  // namespace Math
}  // namespace Lux
