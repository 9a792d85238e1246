#include "DemoAnimation.h"

#include <algorithm>

using namespace Lux::Math;

namespace zedemo {

namespace {

/// The keys on either side of `time` and how far between them it lies:
/// `*before` and `*after` are the same key outside the keys' span and at a
/// key's own time, where there is nothing to interpolate.
template <class Key>
float bracket(const std::vector<Key>& keys, double time, const Key*& before, const Key*& after) {
  const auto next =
      std::upper_bound(keys.begin(), keys.end(), time, [](double t, const Key& key) { return t < key.time; });
  if (next == keys.begin() || next == keys.end()) {
    before = after = next == keys.begin() ? &keys.front() : &keys.back();
    return 0.0f;
  }
  before = &*(next - 1);
  after = time == before->time ? before : &*next;
  return static_cast<float>((time - before->time) / (next->time - before->time));
}

zeVec3f sampleVector(const std::vector<VectorKey>& keys, double time) {
  const VectorKey *a, *b;
  const float t = bracket(keys, time, a, b);
  if (a == b) return a->value;
  zeVec3f v;
  v.lerp(t, a->value, b->value);
  return v;
}

zeQuaternionf sampleRotation(const std::vector<RotationKey>& keys, double time) {
  const RotationKey *a, *b;
  const float t = bracket(keys, time, a, b);
  if (a == b) return a->value;
  zeQuaternionf q;
  q.slerp(t, a->value, b->value);
  return q;
}

}  // namespace

zeMatrix44f localMatrix(const zeVec3f& translation, const zeQuaternionf& rotation, const zeVec3f& scale) {
  zeMatrix44f m;
  m.makeQuaternion(rotation);  // normalises: the float slerp's result is not of unit length
  m.preScale(scale);           // S·R: rows 0 to 2 scaled
  m.setTranslation(translation);
  return m;
}

void sampleAnimation(const Animation& animation, double time, std::vector<zeMatrix44f>& locals) {
  for (const Channel& channel : animation.channels)
    locals[channel.node] = localMatrix(sampleVector(channel.positions, time), sampleRotation(channel.rotations, time),
                                       sampleVector(channel.scales, time));
}

std::vector<zeMatrix44f> restLocals(const Model& model) {
  std::vector<zeMatrix44f> locals;
  locals.reserve(model.nodes.size());
  for (const Node& node : model.nodes) locals.push_back(node.rest);
  return locals;
}

double frameTime(const Animation& animation, unsigned int frame, unsigned int frames) {
  return frames > 1 ? animation.duration * frame / (frames - 1) : 0.0;
}

}  // namespace zedemo
