#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec3ucMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec3uc values in a row; each prints and parses as
/// a zeVec3ucMetaField value.
class ZEMATH_API zeVec3ucArrayMetaField : public impl::ArrayMetaField<zeVec3ucMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec3ucArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
