#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec3fList.h"

namespace Lux {
namespace Math {

/// List of counted references to zeVec3fList objects.
class ZEMATH_API zeVec3fListList : public zeTObjectList<zeVec3fList> {
  ZE_MATH_DECLARE_CLASS(zeVec3fListList)
};

}  // namespace Math
}  // namespace Lux
