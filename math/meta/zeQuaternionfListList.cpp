#include "math/meta/zeQuaternionfListList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeQuaternionfListList, zeQuaternionfList)

}  // namespace Math
}  // namespace Lux
