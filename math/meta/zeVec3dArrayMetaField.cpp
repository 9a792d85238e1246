#include "math/meta/zeVec3dArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec3dArrayMetaField, zeVec3dMetaField)

}  // namespace Math
}  // namespace Lux
