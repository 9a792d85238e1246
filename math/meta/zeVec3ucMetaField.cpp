#include "math/meta/zeVec3ucMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec3ucMetaField)

}  // namespace Math
}  // namespace Lux
