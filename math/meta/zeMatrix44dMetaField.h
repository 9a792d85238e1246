#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeMatrix44d.h"

namespace Lux {
namespace Math {

/// Field type of zeMatrix44d: 128 bytes, aligned to 8, printed row by row with "%g"
/// (six significant digits), laid out as zeMatrix44fMetaField's text.
/// Byte-swapped as double words.
class ZEMATH_API zeMatrix44dMetaField : public impl::ValueMetaField<zeMatrix44dMetaField, zeMatrix44d, double, 8> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeMatrix44dMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "\n%g,%g,%g,%g,\n%g,%g,%g,%g,\n%g,%g,%g,%g,\n%g,%g,%g,%g\n";
};

}  // namespace Math
}  // namespace Lux
