#include "math/meta/zeVec3fListList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeVec3fListList, zeVec3fList)

}  // namespace Math
}  // namespace Lux
