#pragma once

/// \file
/// The vector morphing paths on raw memory: one pass adds up to
/// kMorphPassTargets weighted targets to a start array. Vectors are 3 floats;
/// the targets are tightly packed, the start vectors `fromStride` bytes apart
/// and the outputs `stride` bytes apart (12 bytes written per output).
/// Declared without the library's types so that the units built for wider
/// instructions include nothing else of the library.

namespace Lux {
namespace Math {
namespace impl {

/// The most targets one pass adds; more take further passes over the outputs.
constexpr unsigned int kMorphPassTargets = 16;

/// A pass: out[i] = from[i] + targets[0][i] * weights[0] + ... for the first
/// `targetCount` (at most kMorphPassTargets) targets, in order.
typedef void (*MorphPass)(const unsigned char* from, unsigned int fromStride, const float* const* targets,
                          const float* weights, unsigned int targetCount, unsigned int count, unsigned char* out,
                          unsigned int stride);

}  // namespace impl
}  // namespace Math
}  // namespace Lux
