#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec3fMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec3f values in a row; each prints and parses as
/// a zeVec3fMetaField value.
class ZEMATH_API zeVec3fArrayMetaField : public impl::ArrayMetaField<zeVec3fMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec3fArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
