#include "math/meta/zeVec4ucArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec4ucArrayMetaField, zeVec4ucMetaField)

}  // namespace Math
}  // namespace Lux
