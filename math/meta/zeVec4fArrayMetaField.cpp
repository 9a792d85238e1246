#include "math/meta/zeVec4fArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec4fArrayMetaField, zeVec4fMetaField)

}  // namespace Math
}  // namespace Lux
