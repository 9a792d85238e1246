#pragma once

/// \file
/// The instruction-set paths behind the matrix array transforms. Internal:
/// the members pick one path at first use; the tests and benchmarks run them
/// all.

#include "math/ZEMathExport.h"
#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "math/zeVec4d.h"
#include "math/zeVec4f.h"

namespace Lux {
namespace Math {
namespace impl {

/// A kernel: dst[i] = src[i] transformed by m for i < count; src may be dst.
template <class M, class V>
using ArrayTransformFunction = void (*)(const M& m, const V* src, V* dst, unsigned int count);

/// One path: its name, whether this processor can run it, and its eight kernels.
struct ArrayTransformPath {
  const char* name;
  bool available;
  ArrayTransformFunction<zeMatrix44f, zeVec3f> vectors3f;
  ArrayTransformFunction<zeMatrix44f, zeVec3f> points3f;
  ArrayTransformFunction<zeMatrix44f, zeVec4f> vectors4f;
  ArrayTransformFunction<zeMatrix44f, zeVec4f> points4f;
  ArrayTransformFunction<zeMatrix44d, zeVec3d> vectors3d;
  ArrayTransformFunction<zeMatrix44d, zeVec3d> points3d;
  ArrayTransformFunction<zeMatrix44d, zeVec4d> vectors4d;
  ArrayTransformFunction<zeMatrix44d, zeVec4d> points4d;
};

/// The number of paths compiled into the library; path 0 is the scalar loop,
/// the reference for every other path.
ZEMATH_API unsigned int arrayTransformPathCount() noexcept;
/// Path `i` (below arrayTransformPathCount()).
ZEMATH_API const ArrayTransformPath& arrayTransformPath(unsigned int i) noexcept;
/// The kernels the matrix members use: those of the widest available path,
/// except where a narrower one measured faster (then named in `name`).
ZEMATH_API const ArrayTransformPath& selectedArrayTransformPath() noexcept;

}  // namespace impl
}  // namespace Math
}  // namespace Lux
