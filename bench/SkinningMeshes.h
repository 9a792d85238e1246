#pragma once

// Meshes to skin, shaped like exported characters: the one generator of the
// benchmarks (and of the tests that want such data).
//
// Realistic weights: each vertex counts 1 to min(4, influences) of its
// influences, as many as drawn uniformly; those come first, name distinct
// matrices of the palette and have positive weights summing to 1; the other
// slots have weight exactly 0 and index 0. All-counting weights: every slot
// counts, distinct matrices where the palette has enough, positive weights
// summing to 1. Matrices are affine (last column 0, 0, 0, 1) with elements
// in [-2, 2), sources in [-2, 2) with w = 1.

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

#include <math/ZEMath.h>

namespace zebench {

/// How the weights of a mesh are spread over its influences.
enum class SkinWeights { kRealistic, kAllCounting };

/// The inputs of a skinning call.
struct SkinningMesh {
  unsigned int count = 0, influences = 0;
  std::vector<Lux::Math::zeVec4f> source;
  std::vector<float> weights;
  std::vector<unsigned char> indices;
  std::vector<Lux::Math::zeMatrix44f> palette;
};

/// `count` vertices of `influences` slots over a palette of `paletteSize`
/// matrices (1 to 256), the same for the same arguments.
inline SkinningMesh makeSkinningMesh(unsigned int count, unsigned int influences, unsigned int paletteSize,
                                     SkinWeights kind, unsigned int seed = 1234) {
  std::mt19937 rng(seed);
  std::uniform_real_distribution<float> value(-2.0f, 2.0f), share(0.05f, 1.0f);
  SkinningMesh m;
  m.count = count;
  m.influences = influences;
  m.palette.resize(paletteSize);
  for (Lux::Math::zeMatrix44f& mat : m.palette) {
    for (int e = 0; e < 16; ++e) mat[e] = value(rng);
    mat(0, 3) = mat(1, 3) = mat(2, 3) = 0.0f;
    mat(3, 3) = 1.0f;
  }
  m.source.resize(count);
  for (Lux::Math::zeVec4f& v : m.source) v = Lux::Math::zeVec4f(value(rng), value(rng), value(rng), 1.0f);
  m.weights.assign(std::size_t(count) * influences, 0.0f);
  m.indices.assign(std::size_t(count) * influences, 0);
  const unsigned int most = std::min(influences, 4u);
  // A permutation of the palette; the first `counted` of a partial shuffle
  // of it name distinct matrices (repeating only when the palette has fewer
  // matrices than influences).
  std::vector<unsigned int> names(paletteSize);
  for (unsigned int j = 0; j < paletteSize; ++j) names[j] = j;
  for (unsigned int i = 0; i < count; ++i) {
    const unsigned int counted = kind == SkinWeights::kAllCounting ? influences
                                 : most == 0                       ? 0
                                             : std::uniform_int_distribution<unsigned int>(1, most)(rng);
    float total = 0.0f;
    const std::size_t at = std::size_t(i) * influences;
    for (unsigned int k = 0; k < counted; ++k) {
      const unsigned int pick = k % paletteSize;
      std::swap(names[pick], names[std::uniform_int_distribution<unsigned int>(pick, paletteSize - 1)(rng)]);
      m.indices[at + k] = static_cast<unsigned char>(names[pick]);
      m.weights[at + k] = share(rng);
      total += m.weights[at + k];
    }
    for (unsigned int k = 0; k < counted; ++k) m.weights[at + k] /= total;
  }
  return m;
}

}  // namespace zebench
