#include "DemoModel.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "DemoConversions.h"

using namespace Lux::Math;

namespace zedemo {

namespace {

/// The nodes in an order with parents first, and where to find them.
struct Hierarchy {
  std::vector<const aiNode*> sources;                       ///< Assimp's node of each of the model's nodes
  std::unordered_map<std::string, unsigned int> byName;     ///< first node of each name
  std::unordered_map<unsigned int, unsigned int> meshNode;  ///< first node that shows each mesh
};

Hierarchy readNodes(const aiNode* root, std::vector<Node>& nodes) {
  Hierarchy h;
  // Depth first, without recursion: a deep hierarchy cannot exhaust the stack.
  std::vector<std::pair<const aiNode*, int>> pending{{root, -1}};
  while (!pending.empty()) {
    const auto [source, parent] = pending.back();
    pending.pop_back();
    const unsigned int index = static_cast<unsigned int>(nodes.size());
    nodes.push_back({source->mName.C_Str(), parent, toRowVectorMatrix(source->mTransformation)});
    h.sources.push_back(source);
    h.byName.emplace(source->mName.C_Str(), index);
    for (unsigned int m = 0; m < source->mNumMeshes; ++m) h.meshNode.emplace(source->mMeshes[m], index);
    for (unsigned int c = source->mNumChildren; c-- > 0;) pending.emplace_back(source->mChildren[c], int(index));
  }
  return h;
}

template <class Key>
void sortByTime(std::vector<Key>& keys) {
  std::stable_sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a.time < b.time; });
}

/// Appends Assimp's `count` keys to `out`, each value converted. Keys at no
/// time a frame can have (NaN, infinite) are left out: they cannot be ordered.
template <class In, class Convert, class Out>
void readKeys(const In* keys, unsigned int count, Convert convert, std::vector<Out>& out) {
  for (unsigned int k = 0; k < count; ++k)
    if (std::isfinite(keys[k].mTime)) out.push_back({keys[k].mTime, convert(keys[k].mValue)});
}

/// The keys of one node; a kind of key the file leaves out holds the node's
/// rest value.
Channel readChannel(const aiNodeAnim& source, unsigned int node, const aiNode& restNode) {
  aiVector3D restScale, restPosition;
  aiQuaternion restRotation;
  restNode.mTransformation.Decompose(restScale, restRotation, restPosition);
  Channel channel;
  channel.node = node;
  readKeys(source.mPositionKeys, source.mNumPositionKeys, toVector, channel.positions);
  readKeys(source.mRotationKeys, source.mNumRotationKeys, toLibraryQuaternion, channel.rotations);
  readKeys(source.mScalingKeys, source.mNumScalingKeys, toVector, channel.scales);
  if (channel.positions.empty()) channel.positions.push_back({0.0, toVector(restPosition)});
  if (channel.rotations.empty()) channel.rotations.push_back({0.0, toLibraryQuaternion(restRotation)});
  if (channel.scales.empty()) channel.scales.push_back({0.0, toVector(restScale)});
  sortByTime(channel.positions);
  sortByTime(channel.rotations);
  sortByTime(channel.scales);
  return channel;
}

bool readAnimation(const aiScene& scene, unsigned int which, const Hierarchy& h, Model& model, std::string& error) {
  if (scene.mNumAnimations == 0) {
    error = "it has no animation: nothing moves its bones";
    return false;
  }
  for (unsigned int a = 0; a < scene.mNumAnimations; ++a)
    model.animationNames.push_back(scene.mAnimations[a]->mName.length ? scene.mAnimations[a]->mName.C_Str()
                                                                      : "(unnamed)");
  if (which >= scene.mNumAnimations) {
    error = "it has " + std::to_string(scene.mNumAnimations) +
            " animation(s), numbered from 0; there is no animation " + std::to_string(which);
    return false;
  }
  const aiAnimation& source = *scene.mAnimations[which];
  Animation& animation = model.animation;
  animation.name = model.animationNames[which];
  animation.duration = source.mDuration;
  animation.ticksPerSecond = source.mTicksPerSecond;
  unsigned int unknown = 0;
  for (unsigned int c = 0; c < source.mNumChannels; ++c) {
    const aiNodeAnim& channel = *source.mChannels[c];
    const auto node = h.byName.find(channel.mNodeName.C_Str());
    if (node == h.byName.end()) {
      ++unknown;
      continue;
    }
    animation.channels.push_back(readChannel(channel, node->second, *h.sources[node->second]));
  }
  if (unknown > 0)
    model.notes.push_back(std::to_string(unknown) + " channel(s) of the animation name no node and are left out");
  if (!std::isfinite(animation.duration)) {
    error = "its animation '" + animation.name + "' lasts no finite number of ticks";
    return false;
  }
  if (animation.channels.empty() || !(animation.duration > 0.0)) {
    char lasting[64];
    std::snprintf(lasting, sizeof lasting, "%g", animation.duration);
    error = "its animation '" + animation.name + "' holds a single pose (" + std::to_string(animation.channels.size()) +
            " channel(s), lasting " + lasting + " ticks): nothing moves";
    return false;
  }
  model.animationIndex = which;
  return true;
}

bool readMesh(const aiMesh& source, unsigned int node, const Hierarchy& h, SkinnedMesh& mesh, std::string& error) {
  mesh.name = source.mName.length ? source.mName.C_Str() : "(unnamed)";
  mesh.node = node;
  mesh.positions.resize(source.mNumVertices);
  for (unsigned int v = 0; v < source.mNumVertices; ++v) {
    const aiVector3D& p = source.mVertices[v];
    mesh.positions[v] = zeVec4f(p.x, p.y, p.z, 1.0f);
  }
  for (unsigned int f = 0; f < source.mNumFaces; ++f) {
    const aiFace& face = source.mFaces[f];
    if (face.mNumIndices == 3) mesh.triangles.insert(mesh.triangles.end(), face.mIndices, face.mIndices + 3);
  }
  std::vector<std::vector<Influence>> perVertex(source.mNumVertices);
  for (unsigned int b = 0; b < source.mNumBones; ++b) {
    const aiBone& bone = *source.mBones[b];
    const auto boneNode = h.byName.find(bone.mName.C_Str());
    if (boneNode == h.byName.end()) {
      error = "bone '" + std::string(bone.mName.C_Str()) + "' of mesh '" + mesh.name + "' names no node";
      return false;
    }
    mesh.bones.push_back({bone.mName.C_Str(), boneNode->second, toRowVectorMatrix(bone.mOffsetMatrix)});
    for (unsigned int w = 0; w < bone.mNumWeights; ++w)
      if (bone.mWeights[w].mVertexId < source.mNumVertices)
        perVertex[bone.mWeights[w].mVertexId].push_back({b, bone.mWeights[w].mWeight});
  }
  mesh.fileBones = source.mNumBones;
  const PackedInfluences packed = packInfluences(perVertex, mesh.fileBones);
  // Vertices no bone moves follow the node the mesh hangs from.
  if (packed.unweightedVertices > 0) mesh.bones.push_back({"(mesh node)", node, zeMatrix44f::identityMatrix});
  mesh.weights = packed.weights;
  mesh.clampedVertices = packed.clampedVertices;
  mesh.unweightedVertices = packed.unweightedVertices;
  mesh.droppedInfluences = packed.droppedInfluences;
  mesh.batches = splitIntoBatches(packed, static_cast<unsigned int>(mesh.bones.size()), mesh.indices);
  return true;
}

void readUpAxis(const aiScene& scene, Model& model) {
  int axis = 1, sign = 1;
  if (scene.mMetaData && scene.mMetaData->Get("UpAxis", axis) && axis >= 0 && axis <= 2) {
    model.upAxis = axis;
    if (scene.mMetaData->Get("UpAxisSign", sign) && sign < 0) model.upSign = -1.0f;
  }
}

bool readModel(const std::string& path, unsigned int animation, Model& model, std::string& error) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    error = "no such file";
    return false;
  }
  if (!std::filesystem::is_regular_file(path, ec)) {
    error = "not a file";
    return false;
  }
  Assimp::Importer importer;
  const aiScene* scene = importer.ReadFile(path, modelImportFlags());
  if (!scene || !scene->mRootNode || (scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE)) {
    error = std::string("not a model Assimp can read (") +
            (scene ? "the scene it found is incomplete" : importer.GetErrorString()) + ")";
    return false;
  }
  if (scene->mNumMeshes == 0) {
    error = "it has no mesh";
    return false;
  }
  unsigned int bones = 0;
  for (unsigned int m = 0; m < scene->mNumMeshes; ++m) bones += scene->mMeshes[m]->mNumBones;
  if (bones == 0) {
    error = "it has no bones: none of its " + std::to_string(scene->mNumMeshes) + " mesh(es) is skinned";
    return false;
  }
  const Hierarchy h = readNodes(scene->mRootNode, model.nodes);
  if (!readAnimation(*scene, animation, h, model, error)) return false;
  for (unsigned int m = 0; m < scene->mNumMeshes; ++m) {
    const aiMesh& source = *scene->mMeshes[m];
    if (source.mNumVertices == 0) continue;
    const auto node = h.meshNode.find(m);
    model.meshes.emplace_back();
    if (!readMesh(source, node == h.meshNode.end() ? 0u : node->second, h, model.meshes.back(), error)) return false;
  }
  if (model.meshes.empty()) {
    error = "none of its meshes has a vertex";
    return false;
  }
  readUpAxis(*scene, model);
  return true;
}

}  // namespace

std::size_t Model::vertexCount() const {
  std::size_t n = 0;
  for (const SkinnedMesh& m : meshes) n += m.positions.size();
  return n;
}

unsigned int Model::boneCount() const {
  unsigned int n = 0;
  for (const SkinnedMesh& m : meshes) n += m.fileBones;
  return n;
}

unsigned int modelImportFlags() { return aiProcess_Triangulate | aiProcess_JoinIdenticalVertices; }

bool loadModel(const std::string& path, unsigned int animation, Model& model, std::string& error) {
  model = Model();
  // Assimp reports most failures itself; a file that claims more than memory
  // holds may still throw, from Assimp or from the demo's own arrays.
  try {
    return readModel(path, animation, model, error);
  } catch (const std::bad_alloc&) {
    error = "reading it takes more memory than there is";
  } catch (const std::exception& e) {
    error = std::string("reading it failed: ") + e.what();
  }
  model = Model();
  return false;
}

}  // namespace zedemo
