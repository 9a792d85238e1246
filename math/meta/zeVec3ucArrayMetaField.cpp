#include "math/meta/zeVec3ucArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec3ucArrayMetaField, zeVec3ucMetaField)

}  // namespace Math
}  // namespace Lux
