#pragma once

/// \file
/// The instruction-set paths behind the culling kernels. Internal: the
/// published functions run the one the table chooses when the library's
/// routines serve every plane; the tests run them all. Every path reads the
/// planes through the pointers given; the vector paths read up to
/// kCullPassPlanes of them before writing any result, and take results that
/// share no byte with an input.

#include "math/ZEMathExport.h"
#include "math/impl/PathTable.h"
#include "math/volumes/zeCulling.h"

namespace Lux {
namespace Math {
namespace impl {

/// A path's box kernel: cullAABoxes's arguments, every plane taken as using
/// the library's routine.
typedef void (*CullBoxesPathFunction)(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes,
                                      unsigned int planeCount, unsigned char* results);
/// A path's sphere kernel.
typedef void (*CullSpheresPathFunction)(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                                        unsigned int planeCount, unsigned char* results);

/// The kernels of one culling path.
struct CullKernels {
  CullBoxesPathFunction boxes;
  CullSpheresPathFunction spheres;
};

/// One culling path: its kernels, name and instruction set.
typedef Path<CullKernels> CullPath;

/// The culling paths, narrowest first (path 0 is the scalar loop), and the
/// published kernels' choice among them.
ZEMATH_API const PathTable<CullKernels>& cullPaths() noexcept;

/// The scalar loop: volume by volume, plane by plane, each plane read just
/// before its test, NONE ending a volume's tests; the reference for every
/// other path.
ZEMATH_API void cullAABoxesScalar(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes,
                                  unsigned int planeCount, unsigned char* results);
/// The scalar loop for spheres.
ZEMATH_API void cullSpheresScalar(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                                  unsigned int planeCount, unsigned char* results);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
