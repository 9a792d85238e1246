#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec4ucMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec4uc values in a row; each prints and parses as
/// a zeVec4ucMetaField value.
class ZEMATH_API zeVec4ucArrayMetaField : public impl::ArrayMetaField<zeVec4ucMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec4ucArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
