#include "math/meta/zeVec4fMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec4fMetaField)

}  // namespace Math
}  // namespace Lux
