#include "math/meta/zeVec4dMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec4dMetaField)

}  // namespace Math
}  // namespace Lux
