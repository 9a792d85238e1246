#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec4d.h"

namespace Lux {
namespace Math {

/// Field type of zeVec4d: 32 bytes, aligned to 8 like every double type, printed
/// "%g,%g,%g,%g" (six significant digits), byte-swapped as double words.
class ZEMATH_API zeVec4dMetaField : public impl::ValueMetaField<zeVec4dMetaField, zeVec4d, double, 8> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec4dMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%g,%g,%g,%g";
};

}  // namespace Math
}  // namespace Lux
