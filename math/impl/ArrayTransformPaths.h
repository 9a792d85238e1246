#pragma once

/// \file
/// The instruction-set paths behind the matrix array transforms. Internal:
/// the members run the one the table chooses; the tests and benchmarks run them
/// all.

#include "math/ZEMathExport.h"
#include "math/impl/PathTable.h"
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

/// The eight kernels of one array-transform path.
struct ArrayTransformKernels {
  ArrayTransformFunction<zeMatrix44f, zeVec3f> vectors3f;
  ArrayTransformFunction<zeMatrix44f, zeVec3f> points3f;
  ArrayTransformFunction<zeMatrix44f, zeVec4f> vectors4f;
  ArrayTransformFunction<zeMatrix44f, zeVec4f> points4f;
  ArrayTransformFunction<zeMatrix44d, zeVec3d> vectors3d;
  ArrayTransformFunction<zeMatrix44d, zeVec3d> points3d;
  ArrayTransformFunction<zeMatrix44d, zeVec4d> vectors4d;
  ArrayTransformFunction<zeMatrix44d, zeVec4d> points4d;
};

/// One array-transform path: its kernels, name and instruction set.
typedef Path<ArrayTransformKernels> ArrayTransformPath;

/// The array-transform paths, narrowest first (path 0 is the scalar loop,
/// the reference for every other path), and the members' choice, which may
/// take some kernels from a narrower path that measured faster.
ZEMATH_API const PathTable<ArrayTransformKernels>& arrayTransformPaths() noexcept;

}  // namespace impl
}  // namespace Math
}  // namespace Lux
