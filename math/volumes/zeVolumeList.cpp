#include "math/volumes/zeVolumeList.h"

namespace Lux {
namespace Math {

ZE_MATH_IMPLEMENT_LIST_LIST_CLASS(zeVolumeList, zeVolume)

}  // namespace Math
}  // namespace Lux
