#pragma once

/// \file
/// The library's entry points: the object through which the core loads it,
/// the registration of every class, the smaller registration used by the
/// scene-file loader, and the memory-tracking constants.

#include "core/zeLibrary.h"
#include "core/zeSmartPointer.h"
#include "math/ZEMathExport.h"

/// Called by the core when it loads the library: result becomes the only
/// reference to a new library object (default pool) whose registration
/// function is Lux::libZEMath_bayRegister; what result held is released.
extern "C" ZEMATH_API void createLibraryObject(Lux::zeSmartPointer<Lux::zeLibrary>& result);

namespace Lux {

/// Registers every class of the library in a fixed order (lists and volumes
/// first, then the kernels, the field descriptors, the volumes' partners,
/// the typed lists, the dispatch tables and the box). A second call registers
/// nothing new.
ZEMATH_API void libZEMath_bayRegister();

namespace Math {

/// Registers the classes that scene files can contain: zeVolume, zePlane,
/// zeAABox, zeSphere, zeRay, in that order.
ZEMATH_API void zeBayRegisterForZEBFiles();

/// The library's memory-tracking group name, "Math".
ZEMATH_API extern const char* const zeMemoryTrackingGroup;

/// The library's memory-tracking target flags, 64.
ZEMATH_API extern const unsigned int zeMemoryTrackingTargetFlags;

}  // namespace Math
}  // namespace Lux
