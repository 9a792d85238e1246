#include "math/volumes/zeAABoxList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeAABoxList, zeAABox)

}  // namespace Math
}  // namespace Lux
