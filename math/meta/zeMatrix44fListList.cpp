#include "math/meta/zeMatrix44fListList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeMatrix44fListList, zeMatrix44fList)

}  // namespace Math
}  // namespace Lux
