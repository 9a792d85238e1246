#include "math/meta/zeVec3fList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_DATA_LIST_CLASS(zeVec3fList, zeVec3fMetaField)

}  // namespace Math
}  // namespace Lux
