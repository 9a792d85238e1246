#pragma once

#include "math/volumes/impl/FunctionListRegistration.h"

namespace Lux {
namespace Math {

class zeVolume;

/// Whether the volume encloses nothing.
typedef bool (*zeIsEmptyFunction)(const zeVolume* volume);

/// Dispatch table of emptiness tests, one entry per volume type.
class ZEMATH_API zeIsEmptyFunctionList : public zeTDataList<zeIsEmptyFunction> {
  ZE_MATH_DECLARE_FUNCTION_LIST_CLASS(zeIsEmptyFunctionList, zeIsEmptyFunction)
};

}  // namespace Math
}  // namespace Lux
