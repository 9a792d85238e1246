#pragma once

#include "core/zeTObjectList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/volumes/zeVolume.h"

namespace Lux {
namespace Math {

/// List of counted references to volumes; registering it registers zeVolume too.
class ZEMATH_API zeVolumeList : public zeTObjectList<zeVolume> {
  ZE_MATH_DECLARE_CLASS(zeVolumeList)
};

}  // namespace Math
}  // namespace Lux
