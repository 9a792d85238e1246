#include "math/meta/zeVec3fArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec3fArrayMetaField, zeVec3fMetaField)

}  // namespace Math
}  // namespace Lux
