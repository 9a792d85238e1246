#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec3d.h"

namespace Lux {
namespace Math {

/// Field type of zeVec3d: 24 bytes, aligned to 8 like every double type, printed
/// "%g,%g,%g" (six significant digits), byte-swapped as double words.
class ZEMATH_API zeVec3dMetaField : public impl::ValueMetaField<zeVec3dMetaField, zeVec3d, double, 8> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec3dMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%g,%g,%g";
};

}  // namespace Math
}  // namespace Lux
