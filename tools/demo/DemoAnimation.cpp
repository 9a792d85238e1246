#include "DemoAnimation.h"

#include <algorithm>

using namespace Lux::Math;

namespace zedemo {

namespace {

/// Positions and scales blend linearly, rotations by the library's slerp.
void blend(zeVec3f& out, float t, const zeVec3f& a, const zeVec3f& b) { out.lerp(t, a, b); }
void blend(zeQuaternionf& out, float t, const zeQuaternionf& a, const zeQuaternionf& b) { out.slerp(t, a, b); }

/// The value of `keys` at `time`: the keys on either side blended by how far
/// between them it lies; the first or last key outside the keys' span, and a
/// key itself at its own time, where there is nothing to blend.
template <class Key>
decltype(Key::value) sample(const std::vector<Key>& keys, double time) {
  const auto next =
      std::upper_bound(keys.begin(), keys.end(), time, [](double t, const Key& key) { return t < key.time; });
  if (next == keys.begin()) return keys.front().value;
  if (next == keys.end()) return keys.back().value;
  const Key& before = *(next - 1);
  if (time == before.time) return before.value;
  decltype(Key::value) value;
  blend(value, static_cast<float>((time - before.time) / (next->time - before.time)), before.value, next->value);
  return value;
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
    locals[channel.node] =
        localMatrix(sample(channel.positions, time), sample(channel.rotations, time), sample(channel.scales, time));
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
