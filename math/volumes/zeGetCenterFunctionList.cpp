#include "math/volumes/zeGetCenterFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeGetCenterFunctionList)

}  // namespace Math
}  // namespace Lux
