#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeVec4fMetaField.h"
#include "math/zeQuaternionf.h"

namespace Lux {
namespace Math {

/// Growable list of float quaternions; "_data" holds zeVec4fMetaField elements.
/// A quaternion has no field type of its own: its elements are reflected
/// as four floats (x, y, z, w) and print as zeVec4f values.
class ZEMATH_API zeQuaternionfList : public zeTDataNoOperatorList<zeQuaternionf> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeQuaternionfList)
};

}  // namespace Math
}  // namespace Lux
