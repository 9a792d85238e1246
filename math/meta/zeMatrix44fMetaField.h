#pragma once

#include "math/meta/impl/ValueMetaField.h"
#include "math/zeMatrix44f.h"

namespace Lux {
namespace Math {

/// Field type of zeMatrix44f: 64 bytes, aligned to 16, printed row by row with "%f":
/// a line feed before each row and after the last, a comma ending each of
/// the first three rows. Byte-swapped as float words.
class ZEMATH_API zeMatrix44fMetaField : public impl::ValueMetaField<zeMatrix44fMetaField, zeMatrix44f, float, 16> {
  ZE_MATH_DECLARE_FIELD_CLASS(zeMatrix44fMetaField)

 public:
  /// The text of one value, one conversion per component.
  static constexpr char kFormat[] = "\n%f,%f,%f,%f,\n%f,%f,%f,%f,\n%f,%f,%f,%f,\n%f,%f,%f,%f\n";
};

}  // namespace Math
}  // namespace Lux
