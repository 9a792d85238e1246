#include "DemoMesh.h"

#include <algorithm>
#include <cmath>

using namespace Lux::Math;

namespace zedemo {

namespace {

constexpr unsigned int kRingSize = 24;
constexpr float kRadius = 1.2f;

/// The upper bone's weight at height y: 0 below the joint region, 1 above,
/// smooth between.
float upperWeight(float y) {
  const float t = std::min(1.0f, std::max(0.0f, (y - (kJointHeight - 1.0f)) / 2.0f));
  return t * t * (3.0f - 2.0f * t);
}

}  // namespace

Mesh makeMesh(unsigned int count, float bend) {
  Mesh mesh;
  const unsigned int rings = std::max(2u, (count + kRingSize - 1) / kRingSize);
  for (unsigned int i = 0; i < count; ++i) {
    const float angle = 6.2831853f * float(i % kRingSize) / float(kRingSize);
    const float y = kTubeHeight * float(i / kRingSize) / float(rings - 1);
    const float c = std::cos(angle), s = std::sin(angle);
    mesh.rest.emplace_back(kRadius * c, y, kRadius * s);
    const float swell = 0.8f * std::sin(3.1415927f * y / kTubeHeight);
    mesh.bulge.emplace_back(swell * c, 0.0f, swell * s);
    // A quarter turn about y at the top, none at the bottom, as an offset.
    const float turn = 0.35f * y / kTubeHeight;
    mesh.twist.emplace_back(kRadius * (std::cos(angle + turn) - c), 0.0f, kRadius * (std::sin(angle + turn) - s));
    const float upper = upperWeight(y);
    mesh.weights.push_back(1.0f - upper);
    mesh.weights.push_back(upper);
    mesh.indices.push_back(0);
    mesh.indices.push_back(1);
  }
  mesh.bones[0] = zeMatrix44f::identityMatrix;
  // The upper bone turns about the joint: down to the joint, turn, back up.
  zeMatrix44f down, turn, up;
  down.makeTranslation(zeVec3f(0, -kJointHeight, 0));
  turn.makeRotationRadians(bend, zeVec3f::ZVector);
  up.makeTranslation(zeVec3f(0, kJointHeight, 0));
  zeMatrix44f::matrixMultiply(&mesh.bones[1], &down, &turn);
  zeMatrix44f::matrixMultiply(&mesh.bones[1], &mesh.bones[1], &up);
  mesh.model.makeTranslation(zeVec3f(0, -5, 8));
  mesh.morphed.assign(count, zeVec4f(0, 0, 0, 1));
  mesh.skinned.resize(count);
  return mesh;
}

void morphMesh(Mesh& mesh, float bulgeWeight, float twistWeight) {
  const zeVec3f* targets[2] = {mesh.bulge.data(), mesh.twist.data()};
  const float weights[2] = {bulgeWeight, twistWeight};
  const unsigned int count = static_cast<unsigned int>(mesh.rest.size());
  zeVectorMorphing::_vectorMorphingFunction(mesh.rest.data(), targets, weights, count, 2,
                                            reinterpret_cast<zeVec3f*>(mesh.morphed.data()), sizeof(zeVec4f));
}

void skinMesh(Mesh& mesh) {
  const unsigned int count = static_cast<unsigned int>(mesh.morphed.size());
  zeVectorBlending::_vectorBlendingFunction(mesh.morphed.data(), count, mesh.weights.data(), mesh.indices.data(), 2,
                                            mesh.bones, mesh.skinned.data(), sizeof(zeVec3f));
}

}  // namespace zedemo
