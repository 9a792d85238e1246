#pragma once

/// \file
/// The vector skinning paths on raw memory: a source vertex is 4 floats, a
/// matrix 16 floats row by row, outputs are 12 bytes `stride` bytes apart.
/// Declared without the library's types so that the units built for wider
/// instructions include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

/// A skinning path: the weighted kernel, or the first influence of each
/// vertex alone, unweighted (then `weights` is null and never read).
typedef void (*RawBlend)(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                         unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
