#include "math/volumes/zeNonRefCountedAABoxList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_CLASS_WITH_FURTHER(zeNonRefCountedAABoxList, ::Lux::zeNonRefCountedObjectList, nullptr, nullptr,
                                     &zeAABox::bayRegister)

}  // namespace Math
}  // namespace Lux
