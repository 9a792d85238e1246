#include "math/meta/zeVec2fArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeVec2fArrayMetaField, zeVec2fMetaField)

}  // namespace Math
}  // namespace Lux
