#include "math/meta/zeVec2dMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeVec2dMetaField)

}  // namespace Math
}  // namespace Lux
