#include "math/volumes/zeRayList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeRayList, zeRay)

}  // namespace Math
}  // namespace Lux
