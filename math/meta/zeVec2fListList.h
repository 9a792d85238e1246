#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec2fList.h"

namespace Lux {
namespace Math {

/// List of counted references to zeVec2fList objects.
class ZEMATH_API zeVec2fListList : public zeTObjectList<zeVec2fList> {
  ZE_MATH_DECLARE_CLASS(zeVec2fListList)
};

}  // namespace Math
}  // namespace Lux
