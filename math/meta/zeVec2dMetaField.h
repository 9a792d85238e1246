#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeVec2d.h"

namespace Lux {
namespace Math {

/// Field type of zeVec2d: 16 bytes, aligned to 8 like every double type, printed "%g,%g"
/// (six significant digits, less than a double holds), byte-swapped as
/// double words.
class ZEMATH_API zeVec2dMetaField : public impl::ValueMetaField<zeVec2dMetaField, zeVec2d, double, 8> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeVec2dMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "%g,%g";
};

}  // namespace Math
}  // namespace Lux
