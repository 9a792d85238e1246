#include "math/meta/zeVec4fListList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeVec4fListList, zeVec4fList)

}  // namespace Math
}  // namespace Lux
