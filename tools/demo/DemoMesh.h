#pragma once

// The demo's procedural mesh: an upright tube with two bones (the upper one
// bent at the middle joint) and two morph targets (a bulge and a twist),
// deformed through the kernels the library publishes.

#include <vector>

#include <math/ZEMath.h>

namespace zedemo {

/// A tube and everything needed to deform it.
struct Mesh {
  std::vector<Lux::Math::zeVec3f> rest;     ///< undeformed positions
  std::vector<Lux::Math::zeVec3f> bulge;    ///< morph target 0, as offsets
  std::vector<Lux::Math::zeVec3f> twist;    ///< morph target 1, as offsets
  std::vector<float> weights;               ///< two per vertex: lower bone, upper bone
  std::vector<unsigned char> indices;       ///< two per vertex: 0, 1
  Lux::Math::zeMatrix44f bones[2];          ///< the skinning palette
  Lux::Math::zeMatrix44f model;             ///< places the mesh in the scene
  std::vector<Lux::Math::zeVec4f> morphed;  ///< output of morphing (x, y, z; w = 1), the skinning input
  std::vector<Lux::Math::zeVec3f> skinned;  ///< output of skinning
};

/// Height of the tube and of its joint.
constexpr float kTubeHeight = 10.0f;
constexpr float kJointHeight = 5.0f;

/// A tube of `count` vertices: rings of 24 around the y axis, from the
/// ground to kTubeHeight, with weights blending from the lower to the upper
/// bone across the joint, and the upper bone turned by `bend` radians about z.
Mesh makeMesh(unsigned int count, float bend);

/// Morphs rest into morphed with the given target weights, through
/// zeVectorMorphing's published pointer: the kernel writes x, y, z of each
/// 4-vector (16 bytes apart), so the result is the skinning input as it stands.
void morphMesh(Mesh& mesh, float bulgeWeight, float twistWeight);

/// Skins morphed into skinned, through zeVectorBlending's published pointer.
void skinMesh(Mesh& mesh);

}  // namespace zedemo
