#pragma once

/// \file
/// The vector paths of the matrix array transforms on raw memory: a matrix is
/// 16 scalars row by row, a 3-vector 3 scalars, a 4-vector 4. Each transforms
/// whole blocks of its vector width, src may be dst, and returns how many
/// elements it did (count rounded down to its width); the caller finishes the
/// rest with the scalar loop. Declared without the library's types so that
/// the files built for wider instructions include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

// SSE2: four floats or two doubles at a time (every x86-64 processor has SSE2).
unsigned int transformVectors3fSse2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints3fSse2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors4fSse2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints4fSse2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors3dSse2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints3dSse2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformVectors4dSse2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints4dSse2(const double* m, const double* src, double* dst, unsigned int count);

// AVX2: eight floats or four doubles at a time; only called when the processor has AVX2.
unsigned int transformVectors3fAvx2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints3fAvx2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors4fAvx2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints4fAvx2(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors3dAvx2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints3dAvx2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformVectors4dAvx2(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints4dAvx2(const double* m, const double* src, double* dst, unsigned int count);

// AVX-512 (F, VL, DQ, BW): sixteen floats or eight doubles at a time; only
// called when the processor has all four.
unsigned int transformVectors3fAvx512(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints3fAvx512(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors4fAvx512(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformPoints4fAvx512(const float* m, const float* src, float* dst, unsigned int count);
unsigned int transformVectors3dAvx512(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints3dAvx512(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformVectors4dAvx512(const double* m, const double* src, double* dst, unsigned int count);
unsigned int transformPoints4dAvx512(const double* m, const double* src, double* dst, unsigned int count);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
