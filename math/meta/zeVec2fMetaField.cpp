#include "math/meta/zeVec2fMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec2fMetaField)

}  // namespace Math
}  // namespace Lux
