#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/volumes/zeRay.h"

namespace Lux {
namespace Math {

/// List of counted references to zeRay objects; registering it registers zeRay too.
class ZEMATH_API zeRayList : public zeTObjectList<zeRay> {
  ZE_MATH_DECLARE_CLASS(zeRayList)
};

}  // namespace Math
}  // namespace Lux
