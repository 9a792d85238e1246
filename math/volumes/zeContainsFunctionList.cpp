#include "math/volumes/zeContainsFunctionList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_FUNCTION_LIST_CLASS(zeContainsFunctionList)

}  // namespace Math
}  // namespace Lux
