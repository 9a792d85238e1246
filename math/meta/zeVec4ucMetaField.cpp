#include "math/meta/zeVec4ucMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec4ucMetaField)

}  // namespace Math
}  // namespace Lux
