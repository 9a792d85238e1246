#pragma once

/// \file
/// The vector paths of the matrix array transforms on raw memory: a matrix is
/// 16 scalars row by row, a 3-vector 3 scalars, a 4-vector 4. Each transforms
/// whole blocks of its vector width, src may be dst, and returns how many
/// elements it did (count rounded down to its width); the caller finishes the
/// rest with the scalar loop. Declared without the library's types so that
/// the units built for wider instructions include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

/// A kernel on raw memory; returns how many elements it did.
template <class T>
using RawTransform = unsigned int (*)(const T* m, const T* src, T* dst, unsigned int count);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
