#include "math/meta/zeVec4ucList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeVec4ucList, zeVec4ucMetaField)

}  // namespace Math
}  // namespace Lux
