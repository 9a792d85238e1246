#include "DemoInfluences.h"

#include <algorithm>

#include <math/ZEMath.h>

namespace zedemo {

namespace {

bool heavier(const Influence& a, const Influence& b) {
  return a.weight > b.weight || (a.weight == b.weight && a.bone < b.bone);
}

/// Divides the weights by their sum.
void renormalise(std::vector<Influence>& kept) {
  float sum = 0.0f;
  for (const Influence& i : kept) sum += i.weight;
  for (Influence& i : kept) i.weight /= sum;
}

}  // namespace

PackedInfluences packInfluences(const std::vector<std::vector<Influence>>& perVertex, unsigned int fallbackBone) {
  PackedInfluences packed;
  packed.weights.assign(perVertex.size() * kInfluences, 0.0f);
  packed.bones.assign(perVertex.size() * kInfluences, kNoBone);
  std::vector<Influence> kept;
  for (std::size_t v = 0; v < perVertex.size(); ++v) {
    kept.clear();
    for (const Influence& i : perVertex[v])
      if (i.weight > 0.0f) kept.push_back(i);  // NaN and negative weights are no influence
    std::sort(kept.begin(), kept.end(), heavier);
    if (kept.size() > kInfluences) {
      kept.resize(kInfluences);
      ++packed.clampedVertices;
    }
    if (!kept.empty()) renormalise(kept);
    const std::size_t before = kept.size();
    kept.erase(std::remove_if(kept.begin(), kept.end(),
                              [](const Influence& i) { return !(i.weight > Lux::Math::zeBlendWeightThreshold); }),
               kept.end());
    packed.droppedInfluences += static_cast<unsigned int>(before - kept.size());
    if (kept.size() < before && !kept.empty()) renormalise(kept);
    if (kept.empty()) {
      kept.push_back({fallbackBone, 1.0f});
      ++packed.unweightedVertices;
    }
    for (std::size_t k = 0; k < kept.size(); ++k) {
      packed.weights[v * kInfluences + k] = kept[k].weight;
      packed.bones[v * kInfluences + k] = kept[k].bone;
    }
  }
  return packed;
}

std::vector<Batch> splitIntoBatches(const PackedInfluences& packed, unsigned int boneCount,
                                    std::vector<unsigned char>& indices) {
  const unsigned int vertexCount = static_cast<unsigned int>(packed.weights.size() / kInfluences);
  indices.assign(packed.bones.size(), 0);
  std::vector<Batch> batches;
  std::vector<int> slotInBatch(boneCount, -1);  // the bone's palette entry in the open batch
  Batch batch;
  batch.oneInfluence = true;
  auto close = [&](unsigned int end) {
    batch.count = end - batch.first;
    for (unsigned int bone : batch.bones) slotInBatch[bone] = -1;
    const unsigned int paletteFirst = batch.paletteFirst + static_cast<unsigned int>(batch.bones.size());
    batches.push_back(std::move(batch));
    batch = Batch();
    batch.first = end;
    batch.paletteFirst = paletteFirst;
    batch.oneInfluence = true;
  };
  for (unsigned int v = 0; v < vertexCount; ++v) {
    const unsigned int* bones = &packed.bones[std::size_t(v) * kInfluences];
    unsigned int fresh = 0;
    for (unsigned int k = 0; k < kInfluences; ++k)
      if (bones[k] != kNoBone && slotInBatch[bones[k]] < 0) ++fresh;
    if (batch.bones.size() + fresh > kPaletteLimit) close(v);
    for (unsigned int k = 0; k < kInfluences; ++k) {
      if (bones[k] == kNoBone) continue;
      if (slotInBatch[bones[k]] < 0) {
        slotInBatch[bones[k]] = static_cast<int>(batch.bones.size());
        batch.bones.push_back(bones[k]);
      }
      indices[std::size_t(v) * kInfluences + k] = static_cast<unsigned char>(slotInBatch[bones[k]]);
    }
    if (bones[1] != kNoBone) batch.oneInfluence = false;
  }
  if (vertexCount > batch.first) close(vertexCount);
  return batches;
}

}  // namespace zedemo
