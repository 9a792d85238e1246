#include "math/volumes/zeIsEmptyFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeIsEmptyFunctionList)

}  // namespace Math
}  // namespace Lux
