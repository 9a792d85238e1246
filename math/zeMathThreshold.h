#pragma once

namespace Lux {
namespace Math {

/// The library's small threshold: the single-precision value 5e-7
/// (bits 0x350637BD, 4.999999987376214e-07).
///
/// Double-precision code widens this very float instead of using the double
/// nearest to 5e-7; `zeSmallThreshold<double>` is that widened value.
template <class T>
constexpr T zeSmallThreshold = static_cast<T>(5e-7f);

}  // namespace Math
}  // namespace Lux
