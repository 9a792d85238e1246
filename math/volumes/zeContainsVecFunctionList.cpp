#include "math/volumes/zeContainsVecFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeContainsVecFunctionList)

}  // namespace Math
}  // namespace Lux
