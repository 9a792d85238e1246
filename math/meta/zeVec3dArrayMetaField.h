#pragma once

#include "math/meta/impl/ArrayMetaField.h"
#include "math/meta/zeVec3dMetaField.h"

namespace Lux {
namespace Math {

/// Field type of `_num` zeVec3d values in a row; each prints and parses as
/// a zeVec3dMetaField value.
class ZEMATH_API zeVec3dArrayMetaField : public impl::ArrayMetaField<zeVec3dMetaField> {
  ZE_MATH_DECLARE_ARRAY_FIELD_CLASS(zeVec3dArrayMetaField)
};

}  // namespace Math
}  // namespace Lux
