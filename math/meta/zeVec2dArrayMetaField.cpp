#include "math/meta/zeVec2dArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec2dArrayMetaField, zeVec2dMetaField)

}  // namespace Math
}  // namespace Lux
