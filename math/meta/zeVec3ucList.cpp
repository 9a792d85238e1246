#include "math/meta/zeVec3ucList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeVec3ucList, zeVec3ucMetaField)

}  // namespace Math
}  // namespace Lux
