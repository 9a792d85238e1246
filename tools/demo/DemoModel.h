#pragma once

// A skinned, animated model as the demo keeps it: the node hierarchy with its
// rest transforms, the keys of one animation, and every mesh with its
// positions, its influences packed four per vertex and the bones they name.
// Read from any file Assimp reads, in the library's conventions (row vectors,
// its sense of quaternions) from the moment it is loaded.

#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include <math/ZEMath.h>

#include "DemoInfluences.h"

namespace zedemo {

/// Storage on `Alignment`-byte boundaries, for the kernel's aligned 4-vectors.
template <class T, std::size_t Alignment>
struct AlignedAllocator {
  using value_type = T;
  /// Rebinding, as containers require.
  template <class U>
  struct rebind {
    using other = AlignedAllocator<U, Alignment>;  ///< the same alignment for U
  };
  AlignedAllocator() = default;
  template <class U>
  AlignedAllocator(const AlignedAllocator<U, Alignment>&) noexcept {}
  /// Room for n values.
  T* allocate(std::size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), std::align_val_t(Alignment))); }
  /// Gives room back.
  void deallocate(T* p, std::size_t) noexcept { ::operator delete(p, std::align_val_t(Alignment)); }
  template <class U>
  bool operator==(const AlignedAllocator<U, Alignment>&) const noexcept {
    return true;
  }
  template <class U>
  bool operator!=(const AlignedAllocator<U, Alignment>&) const noexcept {
    return false;
  }
};

/// Source positions as the kernel reads them: 4-vectors (w = 1) on cache-line boundaries.
using PositionArray = std::vector<Lux::Math::zeVec4f, AlignedAllocator<Lux::Math::zeVec4f, 64>>;

/// A node of the hierarchy. Parents come before their children.
struct Node {
  std::string name;
  int parent = -1;              ///< index of the parent node; -1 for the root
  Lux::Math::zeMatrix44f rest;  ///< transform relative to the parent when not animated
};

/// A position or scale at a time.
struct VectorKey {
  double time;  ///< in ticks
  Lux::Math::zeVec3f value;
};

/// A rotation at a time, as a library quaternion.
struct RotationKey {
  double time;  ///< in ticks
  Lux::Math::zeQuaternionf value;
};

/// The keys that move one node. Each list holds at least one key.
struct Channel {
  unsigned int node = 0;
  std::vector<VectorKey> positions;
  std::vector<RotationKey> rotations;
  std::vector<VectorKey> scales;
};

/// One animation: a channel per animated node.
struct Animation {
  std::string name;
  double duration = 0;        ///< in ticks
  double ticksPerSecond = 0;  ///< as the file says; 0 when it says nothing
  std::vector<Channel> channels;
};

/// A node that moves a mesh, and the transform from the mesh's space into
/// the node's at the bind pose.
struct Bone {
  std::string name;
  unsigned int node = 0;
  Lux::Math::zeMatrix44f inverseBind;
};

/// A mesh ready for the kernel.
struct SkinnedMesh {
  std::string name;
  unsigned int node = 0;               ///< the node the mesh hangs from
  PositionArray positions;             ///< in the mesh's space, w = 1
  std::vector<float> weights;          ///< kInfluences per vertex
  std::vector<unsigned char> indices;  ///< kInfluences per vertex, into the batch's palette
  std::vector<Bone> bones;             ///< the file's bones, then the mesh's own node when some vertex has no influence
  std::vector<Batch> batches;          ///< one unless the mesh has more than kPaletteLimit bones
  std::vector<unsigned int> triangles;  ///< three vertex indices each
  unsigned int fileBones = 0;           ///< bones the file gives the mesh
  unsigned int clampedVertices = 0;
  unsigned int unweightedVertices = 0;
  unsigned int droppedInfluences = 0;
  /// Entries of the mesh's palette: the batches' palettes one after the other.
  unsigned int paletteSize() const {
    return batches.empty() ? 0 : batches.back().paletteFirst + static_cast<unsigned int>(batches.back().bones.size());
  }
};

/// Everything the demo animates and skins.
struct Model {
  std::vector<Node> nodes;
  std::vector<SkinnedMesh> meshes;
  Animation animation;                      ///< the one played
  std::vector<std::string> animationNames;  ///< every animation of the file
  unsigned int animationIndex = 0;          ///< which of them is played
  int upAxis = 1;                           ///< 0, 1, 2 for x, y, z
  float upSign = 1.0f;                      ///< 1 when up is the positive axis, -1 otherwise
  std::vector<std::string> notes;           ///< what the loader changed or left out, for the report
  /// Vertices of all meshes.
  std::size_t vertexCount() const;
  /// Bones of all meshes, as the file gives them.
  unsigned int boneCount() const;
};

/// The post-processing the demo asks Assimp for: triangles, identical
/// vertices joined (as an engine's vertex buffers hold them). Bone weights are
/// left as the file has them; the demo packs them itself.
unsigned int modelImportFlags();

/// Reads the model at `path` and plays animation `animation` of it. On
/// failure returns false and says why in `error`: a missing file, a file
/// Assimp cannot read, no mesh, no bones, no animation that moves, a bone
/// naming no node. Never throws.
bool loadModel(const std::string& path, unsigned int animation, Model& model, std::string& error);

}  // namespace zedemo
