#pragma once

#include "core/zeTDataNoOperatorList.h"
#include "math/meta/impl/ListRegistration.h"
#include "math/meta/zeMatrix44fMetaField.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

/// Growable list of float 4x4 matrices; "_data" holds zeMatrix44fMetaField elements.
class ZEMATH_API zeMatrix44fList : public zeTDataNoOperatorList<zeMatrix44f> {
  ZE_MATH_DECLARE_DATA_LIST_CLASS(zeMatrix44fList)
};

}  // namespace Math
}  // namespace Lux
