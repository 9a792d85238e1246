#pragma once

/// \file
/// The library's version. The build checks that these numbers match the
/// version the project declares, so the header and the installed package agree.

/// Major version: changes when the binary interface changes (the SONAME's number).
#define ZEMATH_VERSION_MAJOR 0
/// Minor version: grows with additions that keep the binary interface.
#define ZEMATH_VERSION_MINOR 1
/// Patch version: grows with fixes.
#define ZEMATH_VERSION_PATCH 0
/// The version as text, "major.minor.patch".
#define ZEMATH_VERSION_STRING "0.1.0"
/// The version as one comparable number: major * 10000 + minor * 100 + patch.
#define ZEMATH_VERSION (ZEMATH_VERSION_MAJOR * 10000 + ZEMATH_VERSION_MINOR * 100 + ZEMATH_VERSION_PATCH)
