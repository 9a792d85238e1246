#include "math/volumes/zeIntersectionFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeIntersectionFunctionList)

}  // namespace Math
}  // namespace Lux
