#include "math/meta/zeVec4dArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec4dArrayMetaField, zeVec4dMetaField)

}  // namespace Math
}  // namespace Lux
