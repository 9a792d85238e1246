#include "math/meta/zeMatrix44dArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeMatrix44dArrayMetaField, zeMatrix44dMetaField)

}  // namespace Math
}  // namespace Lux
