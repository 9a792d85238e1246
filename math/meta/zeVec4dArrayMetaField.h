#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec4dMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec4d values in a row; each prints and parses as
/// a zeVec4dMetaField value.
class ZEMATH_API zeVec4dArrayMetaField : public impl::ArrayMetaField<zeVec4dMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec4dArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
