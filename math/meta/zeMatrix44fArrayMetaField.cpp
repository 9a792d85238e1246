#include "math/meta/zeMatrix44fArrayMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_ARRAY_FIELD_CLASS(zeMatrix44fArrayMetaField, zeMatrix44fMetaField)

}  // namespace Math
}  // namespace Lux
