#include "math/meta/zeVec2fListList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeVec2fListList, zeVec2fList)

}  // namespace Math
}  // namespace Lux
