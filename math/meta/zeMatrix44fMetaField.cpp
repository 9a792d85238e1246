#include "math/meta/zeMatrix44fMetaField.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_VALUE_FIELD_CLASS(zeMatrix44fMetaField)

}  // namespace Math
}  // namespace Lux
