#include "math/volumes/zeEmptyFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeEmptyFunctionList)

}  // namespace Math
}  // namespace Lux
