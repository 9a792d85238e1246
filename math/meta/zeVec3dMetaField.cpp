#include "math/meta/zeVec3dMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec3dMetaField)

}  // namespace Math
}  // namespace Lux
