#include "math/meta/zeMatrix44dMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeMatrix44dMetaField)

}  // namespace Math
}  // namespace Lux
