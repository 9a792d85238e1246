#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeMatrix44dMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeMatrix44d values in a row; each prints and parses as
/// a zeMatrix44dMetaField value.
class ZEMATH_API zeMatrix44dArrayMetaField : public impl::ArrayMetaField<zeMatrix44dMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeMatrix44dArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
