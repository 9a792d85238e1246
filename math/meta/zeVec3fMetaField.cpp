#include "math/meta/zeVec3fMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec3fMetaField)

}  // namespace Math
}  // namespace Lux
