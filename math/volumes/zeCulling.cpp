// The culling kernels: the scalar loop, the table of instruction-set paths,
// the volume-by-volume dispatch for tables that hold other routines, and the
// published functions and pointers.

#include "math/volumes/zeCulling.h"

#include <cstddef>

#include "math/impl/IsaRawPaths.h"
#include "math/volumes/impl/CullScalarLoop.h"
#include "math/volumes/impl/CullingPaths.h"
#include "math/volumes/zeAABox.h"
#include "math/volumes/zePlane.h"
#include "math/volumes/zeSphere.h"

namespace Lux {
namespace Math {

static_assert(sizeof(zeAABoxValue) == 6 * sizeof(float), "a box is six packed floats");
static_assert(sizeof(zeSphereValue) == 4 * sizeof(float), "a sphere is four packed floats");

namespace impl {

namespace {

// A plane as its box and sphere routines read it, the octant rule included.
CullPlane compact(const zePlane& p) {
  const int octant = p._octant;
  return {{p._norm.x, p._norm.y, p._norm.z}, p._offset, octant >= 1 && octant <= 7 ? unsigned(octant) : 0u};
}

// The culling rule of each kind of value (CullScalarLoop.h) and the library's
// routine for it.
template <class Value>
struct Kind;

template <>
struct Kind<zeAABoxValue> {
  typedef CullBoxes Rule;
  typedef zeAABox Volume;
  static constexpr zeContainsFunction kRoutine = &zePlane::zePlaneContainsAABox;
  static void assign(zeAABox& box, const zeAABoxValue& v) {
    box._min = v.min;
    box._max = v.max;
  }
};

template <>
struct Kind<zeSphereValue> {
  typedef CullSpheres Rule;
  typedef zeSphere Volume;
  static constexpr zeContainsFunction kRoutine = &zePlane::zePlaneContainsSphere;
  static void assign(zeSphere& sphere, const zeSphereValue& v) {
    sphere._center = v.center;
    sphere._radius = v.radius;
  }
};

template <class Value>
const float* raw(const Value* v) {
  return reinterpret_cast<const float*>(v);
}

template <class Value>
void scalarLoop(const Value* volumes, unsigned int count, const zePlane* const* planes, unsigned int planeCount,
                unsigned char* results) {
  typedef typename Kind<Value>::Rule Rule;
  for (unsigned int i = 0; i < count; ++i) {
    unsigned char result = kCullAll;
    for (unsigned int j = 0; j < planeCount && result != kCullNone; ++j) {
      const CullPlane plane = compact(*planes[j]);
      result = cullOne<Rule>(&plane, 1, raw(volumes + i), result);
    }
    results[i] = result;
  }
}

// An instruction set's passes: the planes read kCullPassPlanes at a time, each
// later pass starting from the results of the one before.
template <class Value, RawCull RawKernels::*kKernel, const RawKernels& kIsa>
void onPath(const Value* volumes, unsigned int count, const zePlane* const* planes, unsigned int planeCount,
            unsigned char* results) {
  if (count == 0) return;
  unsigned int done = 0;
  do {
    const unsigned int n = planeCount - done < kCullPassPlanes ? planeCount - done : kCullPassPlanes;
    CullPlane pass[kCullPassPlanes];
    for (unsigned int k = 0; k < n; ++k) pass[k] = compact(*planes[done + k]);
    (kIsa.*kKernel)(raw(volumes), count, pass, n, done ? results : nullptr, results);
    done += n;
  } while (done < planeCount);
}

template <const RawKernels& kIsa>
constexpr CullPath vectorPath(const char* name, ZE_MATH_INSTRUCTION_SET level) {
  return {{&onPath<zeAABoxValue, &RawKernels::cullBoxes, kIsa>, &onPath<zeSphereValue, &RawKernels::cullSpheres, kIsa>},
          name,
          level};
}

constexpr CullPath kPaths[] = {
    {{&cullAABoxesScalar, &cullSpheresScalar}, "scalar", ZE_MATH_INSTRUCTION_SET_SCALAR},
    vectorPath<kSse2Kernels>("sse2", ZE_MATH_INSTRUCTION_SET_SSE2),
    vectorPath<kAvx2Kernels>("avx2", ZE_MATH_INSTRUCTION_SET_AVX2),
    vectorPath<kAvx512Kernels>("avx512", ZE_MATH_INSTRUCTION_SET_AVX512),
};

const PathTable<CullKernels> kTable(kPaths);

// Whether every plane's entry for the volume class is the library's routine,
// which the paths compute. Two loads and an index per plane.
bool libraryRoutineServes(const zePlane* const* planes, unsigned int planeCount, const zeMetaObject* volumeClass,
                          zeContainsFunction routine) {
  if (planeCount == 0) return true;
  if (!volumeClass) return false;
  for (unsigned int j = 0; j < planeCount; ++j)
    if (zeVolume::getContainsFunction(planes[j]->getMetaObject(), volumeClass) != routine) return false;
  return true;
}

// Volume by volume through the tables, as an application would write it, with
// one object of the volume class made for the call. False when it cannot be made.
template <class Value>
bool cullThroughTables(const Value* volumes, unsigned int count, const zePlane* const* planes, unsigned int planeCount,
                       unsigned char* results) {
  typedef typename Kind<Value>::Volume Volume;
  Volume* volume = static_cast<Volume*>(Volume::_instantiateFromPool(nullptr));
  if (!volume) return false;
  for (unsigned int i = 0; i < count; ++i) {
    Kind<Value>::assign(*volume, volumes[i]);
    unsigned char result = kCullAll;
    for (unsigned int j = 0; j < planeCount; ++j) {
      const ZE_MATH_CONTAINMENT_RESULTS answer = planes[j]->contains(volume);
      if (answer == ZE_MATH_CONTAINMENT_RESULTS_NONE) {
        result = kCullNone;
        break;
      }
      if (answer == ZE_MATH_CONTAINMENT_RESULTS_PARTIAL) result = kCullPartial;
    }
    results[i] = result;
  }
  volume->release();
  return true;
}

// The vector paths read the planes of a pass, and a block of volumes, before
// writing; the scalar loop reads each just before its test. Results that
// share bytes with an input take the scalar loop, which gives what testing
// volume by volume gives.
bool resultsShareBytes(const void* volumes, std::size_t volumeBytes, const zePlane* const* planes,
                       unsigned int planeCount, const unsigned char* results, unsigned int count) {
  if (bytesOverlap(results, count, volumes, volumeBytes)) return true;
  if (bytesOverlap(results, count, planes, std::size_t(planeCount) * sizeof(*planes))) return true;
  for (unsigned int j = 0; j < planeCount; ++j)
    if (bytesOverlap(results, count, planes[j], sizeof(zePlane))) return true;
  return false;
}

template <class Value, class PathFunction>
bool cull(const Value* volumes, unsigned int count, const zePlane* const* planes, unsigned int planeCount,
          unsigned char* results, PathFunction CullKernels::*kernel) {
  if (count == 0) return true;
  typedef Kind<Value> K;
  if (!libraryRoutineServes(planes, planeCount, K::Volume::getClassMeta(), K::kRoutine))
    return cullThroughTables(volumes, count, planes, planeCount, results);
  const bool shared =
      resultsShareBytes(volumes, std::size_t(count) * sizeof(Value), planes, planeCount, results, count);
  (kTable.pathFor(shared).*kernel)(volumes, count, planes, planeCount, results);
  return true;
}

}  // namespace

void cullAABoxesScalar(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes,
                       unsigned int planeCount, unsigned char* results) {
  scalarLoop(boxes, count, planes, planeCount, results);
}

void cullSpheresScalar(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                       unsigned int planeCount, unsigned char* results) {
  scalarLoop(spheres, count, planes, planeCount, results);
}

const PathTable<CullKernels>& cullPaths() noexcept { return kTable; }

}  // namespace impl

bool cullAABoxes(const zeAABoxValue* boxes, unsigned int count, const zePlane* const* planes, unsigned int planeCount,
                 unsigned char* results) {
  return impl::cull(boxes, count, planes, planeCount, results, &impl::CullKernels::boxes);
}

bool cullSpheres(const zeSphereValue* spheres, unsigned int count, const zePlane* const* planes,
                 unsigned int planeCount, unsigned char* results) {
  return impl::cull(spheres, count, planes, planeCount, results, &impl::CullKernels::spheres);
}

// Constant-initialised: the pointers hold the kernels before any code runs.
zeCulling::CullAABoxesFunction zeCulling::_cullAABoxesFunction = &cullAABoxes;
zeCulling::CullSpheresFunction zeCulling::_cullSpheresFunction = &cullSpheres;

}  // namespace Math
}  // namespace Lux
