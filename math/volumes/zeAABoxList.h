#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/volumes/zeAABox.h"

namespace Lux {
namespace Math {

/// List of counted references to boxes; registering it registers zeAABox too.
class ZEMATH_API zeAABoxList : public zeTObjectList<zeAABox> {
  ZE_MATH_DECLARE_CLASS(zeAABoxList)
};

}  // namespace Math
}  // namespace Lux
