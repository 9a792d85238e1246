#pragma once

/// \file
/// The vector skinning paths on raw memory: a source vertex is 4 floats, a
/// matrix 16 floats row by row, outputs are 12 bytes `stride` bytes apart.
/// Declared without the library's types so that the files built for wider
/// instructions include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

/// SSE2: four vertices at a time (every x86-64 processor has SSE2).
void blendRawSse2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride);
/// SSE2, first influence only, unweighted.
void blendOneWeightRawSse2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride);
/// AVX2: eight vertices at a time; only called when the processor has AVX2.
void blendRawAvx2(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                  unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride);
/// AVX2, first influence only, unweighted.
void blendOneWeightRawAvx2(const float* source, unsigned int count, const unsigned char* indices,
                           unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                           unsigned int stride);
/// AVX-512 (F, VL, BW, DQ): sixteen vertices at a time; only called when the
/// processor has all four.
void blendRawAvx512(const float* source, unsigned int count, const float* weights, const unsigned char* indices,
                    unsigned int weightsPerVertex, const float* matrices, unsigned char* out, unsigned int stride);
/// AVX-512, first influence only, unweighted.
void blendOneWeightRawAvx512(const float* source, unsigned int count, const unsigned char* indices,
                             unsigned int weightsPerVertex, const float* matrices, unsigned char* out,
                             unsigned int stride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
