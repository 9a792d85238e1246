#pragma once

// Bone influences as the skinning kernel takes them: four per vertex, sorted
// by weight, the unused ones zero with index 0, and the vertices split into
// batches whose palettes the kernel's one-byte indices can reach.

#include <vector>

namespace zedemo {

/// Influences per vertex in the packed layout.
constexpr unsigned int kInfluences = 4;
/// Matrices one kernel call can index (its indices are bytes).
constexpr unsigned int kPaletteLimit = 256;
/// The bone slot of an unused influence.
constexpr unsigned int kNoBone = ~0u;

/// One bone's weight on a vertex, as a file gives it.
struct Influence {
  unsigned int bone;  ///< the mesh's bone slot
  float weight;
};

/// The influences of a mesh, kInfluences per vertex.
struct PackedInfluences {
  std::vector<float> weights;           ///< summing to 1 per vertex; unused ones 0
  std::vector<unsigned int> bones;      ///< bone slot per weight; kNoBone where unused
  unsigned int clampedVertices = 0;     ///< vertices that had more than kInfluences
  unsigned int unweightedVertices = 0;  ///< vertices with no usable influence
  unsigned int droppedInfluences = 0;   ///< influences too small for the kernel to count
};

/// Packs the influences of each vertex (`perVertex[v]`, in any order): keeps
/// those with a positive weight, the kInfluences largest of them when there
/// are more (ties to the lower bone slot), sorts them by falling weight and
/// renormalises them to sum 1; then drops any the kernel would skip (not above
/// zeBlendWeightThreshold) and renormalises again. A vertex left with none is
/// bound wholly to `fallbackBone`.
PackedInfluences packInfluences(const std::vector<std::vector<Influence>>& perVertex, unsigned int fallbackBone);

/// A run of consecutive vertices skinned by one kernel call with one palette.
struct Batch {
  unsigned int first = 0;           ///< first vertex
  unsigned int count = 0;           ///< vertices
  unsigned int paletteFirst = 0;    ///< where its palette starts in the mesh's palette
  std::vector<unsigned int> bones;  ///< bone slot of each palette entry, at most kPaletteLimit
  bool oneInfluence = false;        ///< every vertex has a single influence of weight 1
};

/// Splits the vertices into batches of consecutive vertices naming at most
/// kPaletteLimit bones each (one batch when the mesh has that few), and
/// writes each influence's index into its batch's palette to `indices`
/// (0 for unused ones).
std::vector<Batch> splitIntoBatches(const PackedInfluences& packed, unsigned int boneCount,
                                    std::vector<unsigned char>& indices);

}  // namespace zedemo
