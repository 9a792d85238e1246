// The demo program: run with small counts, its culling counts must match the
// same frustum culling done here, volume by volume, and its batch culling
// must agree with its own per-volume culling; bad options must fail.
// On models (the packaged characters where they are installed, and small
// files written here): the palettes agree with the node transforms Assimp's
// own mathematics gives, the skinned positions with a plain double-precision
// skinning, and bad files fail with a message.

#include <assimp/scene.h>
#include <sys/wait.h>
#include <assimp/Importer.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <math/ZEMath.h>

#include "demo/DemoAnimation.h"
#include "demo/DemoConversions.h"
#include "demo/DemoModel.h"
#include "demo/DemoScene.h"
#include "demo/DemoSkeleton.h"
#include "demo/DemoSkinning.h"
#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace {

using Demo = zetest::CoreTest;

/// Runs the demo with `arguments`; its standard output, and its exit status in `status`.
std::string runDemo(const std::string& arguments, int& status) {
  const std::string command = std::string(ZE_DEMO_PATH) + " " + arguments + " 2>&1";
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return output;
  char buffer[4096];
  std::size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
  status = pclose(pipe);
  return output;
}

/// The number after "key=" on the demo's line for scripts that begins with
/// `line` ("counts" for the built-in scene, "model" for a model), or -1.
long valueOn(const std::string& output, const char* line, const char* key) {
  const std::size_t at = output.find("\n" + std::string(line) + " ");
  if (at == std::string::npos) return -1;
  const std::size_t value = output.find(std::string(" ") + key + "=", at);
  return value == std::string::npos ? -1 : std::strtol(output.c_str() + value + std::strlen(key) + 2, nullptr, 10);
}

/// The number after "key=" on the counts line, or -1.
long countOf(const std::string& output, const char* key) { return valueOn(output, "counts", key); }

}  // namespace

TEST_F(Demo, CullingCountsMatchTheFrustumTestsDoneDirectly) {
  libZEMath_bayRegister();
  const unsigned int count = 3001;
  long expected[3] = {0, 0, 0};  // none, partial, all
  {
    const zedemo::Camera camera = zedemo::makeCamera(zedemo::kViewWidth, zedemo::kViewHeight);
    const auto volumes = zedemo::makeVolumes(7, count);
    for (const auto& volume : volumes) {
      int result = ZE_MATH_CONTAINMENT_RESULTS_ALL;
      for (const auto& plane : camera.planes) result = std::min<int>(result, plane->contains(volume.get()));
      ++expected[result];
    }
  }
  // The scene must exercise all three outcomes for the comparison to mean much.
  for (long n : expected) EXPECT_GT(n, 0);

  int status = -1;
  const std::string output = runDemo("--seed 7 --boxes 3001 --vertices 500", status);
  ASSERT_EQ(status, 0) << output;
  EXPECT_EQ(countOf(output, "volumes"), long(count));
  EXPECT_EQ(countOf(output, "outside"), expected[ZE_MATH_CONTAINMENT_RESULTS_NONE]);
  EXPECT_EQ(countOf(output, "partial"), expected[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL]);
  EXPECT_EQ(countOf(output, "inside"), expected[ZE_MATH_CONTAINMENT_RESULTS_ALL]);
  EXPECT_EQ(countOf(output, "vertices"), 500);
  EXPECT_NE(output.find("records=unchanged"), std::string::npos);
  EXPECT_NE(output.find("batch=agrees"), std::string::npos) << output;
}

TEST_F(Demo, WritesAPicture) {
  const std::string path = std::string(::testing::TempDir()) + "zeDemoTest.png";
  std::remove(path.c_str());
  int status = -1;
  const std::string output = runDemo("--boxes 200 --vertices 240 --image " + path, status);
  ASSERT_EQ(status, 0) << output;
  FILE* file = std::fopen(path.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  unsigned char signature[8] = {};
  EXPECT_EQ(std::fread(signature, 1, 8, file), 8u);
  std::fclose(file);
  std::remove(path.c_str());
  EXPECT_EQ(std::memcmp(signature, "\x89PNG\r\n\x1a\n", 8), 0);
}

TEST_F(Demo, RefusesBadOptionsWithAMessage) {
  for (const char* arguments : {"--boxes lots", "--vertices -3", "--colour red", "--seed"}) {
    int status = 0;
    const std::string output = runDemo(arguments, status);
    EXPECT_NE(status, 0) << arguments;
    EXPECT_FALSE(output.empty()) << arguments;
    EXPECT_EQ(output.find("\ncounts "), std::string::npos) << arguments;
  }
}

// ---------------------------------------------------------------- models

namespace {

using Matrix = aiMatrix4x4t<double>;
using Quaternion = aiQuaterniont<double>;
using Vector = aiVector3t<double>;

/// The packaged characters the model tests play, of several formats.
const char* const kCharacters[] = {"X/Testwuson.X",    "X/BCN_Epileptic.X", "FBX/animation_with_skeleton.fbx",
                                   "FBX/huesitos.fbx", "BVH/01_01.bvh",     "glTF2/simple_skin/simple_skin.gltf"};

bool haveCharacters() { return std::filesystem::is_directory(ZE_DEMO_MODELS); }

#define SKIP_WITHOUT_CHARACTERS()                                         \
  if (!haveCharacters())                                                  \
  GTEST_SKIP() << ZE_DEMO_MODELS                                          \
      " is missing: install assimp-testmodels (scripts/deps.sh does) to " \
      "play the packaged characters"

Vector widen(const aiVector3D& v) { return Vector(v.x, v.y, v.z); }
Quaternion widen(const aiQuaternion& q) { return Quaternion(q.w, q.x, q.y, q.z); }
Matrix widen(const aiMatrix4x4& m) {
  Matrix d;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) d[r][c] = m[r][c];
  return d;
}

/// The key of `keys` around `time`, interpolated with Assimp's own operations
/// in double precision (lerp, or Assimp's quaternion slerp).
template <class Key, class Value, class Blend>
Value sampleKeys(const Key* keys, unsigned int count, double time, Value rest, Blend blend) {
  if (count == 0) return rest;
  unsigned int i = 0;
  while (i + 1 < count && keys[i + 1].mTime <= time) ++i;
  if (i + 1 == count || time <= keys[0].mTime) return widen(keys[time <= keys[0].mTime ? 0 : i].mValue);
  const double t = (time - keys[i].mTime) / (keys[i + 1].mTime - keys[i].mTime);
  return blend(widen(keys[i].mValue), widen(keys[i + 1].mValue), t);
}

/// Every node's world transform at `time` by Assimp's conventions and
/// mathematics (column vectors, parent * child), in double precision.
void assimpWorlds(const aiScene& scene, const aiAnimation& animation, double time, const aiNode* node,
                  const Matrix& parent, std::map<std::string, Matrix>& worlds) {
  Matrix local = widen(node->mTransformation);
  for (unsigned int c = 0; c < animation.mNumChannels; ++c) {
    const aiNodeAnim& ch = *animation.mChannels[c];
    if (ch.mNodeName != node->mName) continue;
    aiVector3D s, p;
    aiQuaternion r;
    node->mTransformation.Decompose(s, r, p);
    const auto lerp = [](const Vector& a, const Vector& b, double t) { return a + (b - a) * t; };
    const Vector position = sampleKeys(ch.mPositionKeys, ch.mNumPositionKeys, time, widen(p), lerp);
    const Vector scale = sampleKeys(ch.mScalingKeys, ch.mNumScalingKeys, time, widen(s), lerp);
    Quaternion rotation = sampleKeys(ch.mRotationKeys, ch.mNumRotationKeys, time, widen(r),
                                     [](const Quaternion& a, const Quaternion& b, double t) {
                                       Quaternion q;
                                       Quaternion::Interpolate(q, a, b, t);
                                       return q;
                                     });
    local = Matrix(scale, rotation.Normalize(), position);
    break;
  }
  const Matrix world = parent * local;
  worlds.emplace(node->mName.C_Str(), world);
  for (unsigned int c = 0; c < node->mNumChildren; ++c)
    assimpWorlds(scene, animation, time, node->mChildren[c], world, worlds);
}

/// The demo's palette of every mesh at `time`.
std::vector<std::vector<zeMatrix44f>> demoPalettes(const zedemo::Model& model, double time) {
  std::vector<zeMatrix44f> locals = zedemo::restLocals(model), worlds(model.nodes.size());
  zedemo::sampleAnimation(model.animation, time, locals);
  zedemo::composeWorlds(model.nodes, locals, worlds);
  std::vector<std::vector<zeMatrix44f>> palettes;
  for (const zedemo::SkinnedMesh& mesh : model.meshes) {
    palettes.emplace_back(mesh.paletteSize());
    zedemo::buildPalette(mesh, worlds, palettes.back().data());
  }
  return palettes;
}

/// The largest difference between the demo's palettes and Assimp's bone
/// matrices (world * offset), over every bone of every mesh, relative to the
/// matrix's scale (its largest 3x3 element) and, for the translation, to
/// `size` as well.
double paletteError(const zedemo::Model& model, const aiScene& scene, double time, double size) {
  std::map<std::string, Matrix> worlds;
  assimpWorlds(scene, *scene.mAnimations[model.animationIndex], time, scene.mRootNode, Matrix(), worlds);
  const auto palettes = demoPalettes(model, time);
  double error = 0;
  std::size_t m = 0;
  for (unsigned int s = 0; s < scene.mNumMeshes; ++s) {
    const aiMesh& source = *scene.mMeshes[s];
    if (source.mNumVertices == 0) continue;
    const zedemo::SkinnedMesh& mesh = model.meshes[m];
    for (const zedemo::Batch& batch : mesh.batches)
      for (std::size_t k = 0; k < batch.bones.size(); ++k) {
        if (batch.bones[k] >= source.mNumBones) continue;  // the mesh's own node, not a bone of the file
        const aiBone& bone = *source.mBones[batch.bones[k]];
        const Matrix expected = worlds.at(bone.mName.C_Str()) * widen(bone.mOffsetMatrix);
        const zeMatrix44f& got = palettes[m][batch.paletteFirst + k];
        double scale = 1e-30;
        for (int r = 0; r < 3; ++r)
          for (int c = 0; c < 3; ++c) scale = std::max(scale, std::fabs(expected[r][c]));
        // Assimp's row r, column c is the library's row c, column r; Assimp's
        // column 3 (the translation) is the library's row 3.
        for (int r = 0; r < 4; ++r)
          for (int c = 0; c < 4; ++c)
            error = std::max(error, std::fabs(got(c, r) - expected[r][c]) / (c == 3 ? scale * size : scale));
      }
    ++m;
  }
  return error;
}

/// The size of the model at rest: the largest extent of its vertices.
double restSize(const zedemo::Model& model) {
  double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
  for (const zedemo::SkinnedMesh& mesh : model.meshes)
    for (const zeVec4f& p : mesh.positions)
      for (int i = 0; i < 3; ++i) lo[i] = std::min(lo[i], double(p[i])), hi[i] = std::max(hi[i], double(p[i]));
  return std::max({hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2], 1e-6});
}

/// The largest distance between the demo's skinned positions at `time` and a
/// plain double-precision skinning of the same positions, weights and
/// palette, relative to the size of the skinned model.
double skinningError(const zedemo::Model& model, double time) {
  const auto palettes = demoPalettes(model, time);
  double error = 0, lo = 1e300, hi = -1e300;
  for (std::size_t m = 0; m < model.meshes.size(); ++m) {
    const zedemo::SkinnedMesh& mesh = model.meshes[m];
    std::vector<zeVec3f> skinned(mesh.positions.size());
    zedemo::skinMesh(mesh, palettes[m].data(), skinned.data(), zeVectorBlending::_vectorBlendingFunction,
                     zeVectorBlending::_vectorBlendingOneWeightFunction);
    for (const zedemo::Batch& batch : mesh.batches)
      for (unsigned int v = batch.first; v < batch.first + batch.count; ++v) {
        double sum[3] = {0, 0, 0};
        for (unsigned int k = 0; k < zedemo::kInfluences; ++k) {
          const double w = mesh.weights[v * zedemo::kInfluences + k];
          const zeMatrix44f& b = palettes[m][batch.paletteFirst + mesh.indices[v * zedemo::kInfluences + k]];
          const zeVec4f& p = mesh.positions[v];
          for (int c = 0; c < 3; ++c)
            sum[c] += w * (double(p.x) * b(0, c) + double(p.y) * b(1, c) + double(p.z) * b(2, c) + b(3, c));
        }
        for (int c = 0; c < 3; ++c) {
          error = std::max(error, std::fabs(sum[c] - skinned[v][c]));
          lo = std::min(lo, sum[c]), hi = std::max(hi, sum[c]);
        }
      }
  }
  return error / std::max(hi - lo, 1e-6);
}

/// A Valve SMD file of `bones` bones (0 the root, the others its children),
/// `frames` frames of a skeleton turning about z, and 200 triangles whose
/// vertices each name `links` bones with equal weights.
std::string writeSmd(const std::string& name, unsigned int bones, unsigned int frames, unsigned int links) {
  const std::string path = std::string(::testing::TempDir()) + name;
  std::ofstream out(path);
  out << "version 1\nnodes\n0 \"root\" -1\n";
  for (unsigned int b = 1; b < bones; ++b) out << b << " \"bone" << b << "\" 0\n";
  out << "end\nskeleton\n";
  for (unsigned int f = 0; f < frames; ++f) {
    out << "time " << f << "\n0 0 0 0 0 0 " << 0.2 * f << "\n";
    for (unsigned int b = 1; b < bones; ++b) out << b << " " << 0.01 * b << " 0 0 0 0 " << 0.05 * f << "\n";
  }
  out << "end\ntriangles\n";
  for (unsigned int v = 0; v < 600; ++v) {
    if (v % 3 == 0) out << "skin\n";
    out << "0 " << 0.01 * v << " " << v % 3 << " 0.5 0 0 1 0 0 " << links;
    for (unsigned int k = 0; k < links; ++k) out << " " << (v * 7 + k) % bones << " " << 1.0 / links;
    out << "\n";
  }
  out << "end\n";
  return path;
}

/// The number after "key=" on the model line, or -1.
long modelValue(const std::string& output, const char* key) { return valueOn(output, "model", key); }

}  // namespace

TEST(DemoConversions, AssimpRotationsAndTransformsMeanTheSameInTheLibrary) {
  const float quarter = 1.5707964f;
  const struct {
    aiVector3D axis;
    float angle;
  } rotations[] = {{{0, 0, 1}, quarter}, {{1, 0, 0}, 0.3f}, {{0, 1, 0}, -2.0f}, {{0.48f, 0.6f, 0.64f}, 1.1f}};
  for (const auto& r : rotations) {
    const aiQuaternion q(r.axis, r.angle);
    zeMatrix44f converted;
    converted.makeQuaternion(zedemo::toLibraryQuaternion(q));
    const zeMatrix44f expected = zedemo::toRowVectorMatrix(aiMatrix4x4(q.GetMatrix()));
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(converted[i], expected[i], 1e-6f) << r.angle << " element " << i;
    // Read as it stands, Assimp's quaternion turns the other way.
    zeMatrix44f unconverted;
    unconverted.makeQuaternion(zeQuaternionf(q.x, q.y, q.z, q.w));
    EXPECT_FALSE(unconverted == expected) << r.angle;
  }
  // A quarter turn about z takes x to y, and a translation lands in row 3.
  aiMatrix4x4 turn, move;
  aiMatrix4x4::RotationZ(quarter, turn);
  aiMatrix4x4::Translation(aiVector3D(1, 2, 3), move);
  zeVec3f p;
  p.transformPoint(zeVec3f(1, 0, 0), zedemo::toRowVectorMatrix(move * turn));  // turn first, then move
  EXPECT_NEAR(p.x, 1.0f, 1e-6f);
  EXPECT_NEAR(p.y, 3.0f, 1e-6f);
  EXPECT_NEAR(p.z, 3.0f, 1e-6f);
}

TEST_F(Demo, PackagedCharactersAgreeWithAssimpAndWithDoubleSkinning) {
  SKIP_WITHOUT_CHARACTERS();
  libZEMath_bayRegister();
  for (const char* name : kCharacters) {
    const std::string path = std::string(ZE_DEMO_MODELS) + "/" + name;
    zedemo::Model model;
    std::string error;
    ASSERT_TRUE(zedemo::loadModel(path, 0, model, error)) << name << ": " << error;
    Assimp::Importer importer;
    const aiScene* scene = importer.ReadFile(path, zedemo::modelImportFlags());
    ASSERT_NE(scene, nullptr) << name;
    const double size = restSize(model);
    double palette = 0, skinning = 0;
    for (unsigned int f = 0; f < 9; ++f) {  // keys and the times between them
      const double time = zedemo::frameTime(model.animation, f, 9);
      palette = std::max(palette, paletteError(model, *scene, time, size));
      skinning = std::max(skinning, skinningError(model, time));
    }
    // The library's float slerp approximates (a plain blend up to a point,
    // then a fitted polynomial): within about 3e-3 radians per joint.
    EXPECT_LT(palette, 5e-3) << name;
    EXPECT_LT(skinning, 1e-6) << name;
    // The check has teeth: rotations read without turning them around disagree.
    for (zedemo::Channel& channel : model.animation.channels)
      for (zedemo::RotationKey& key : channel.rotations) key.value.conjugate(key.value);
    double unconverted = 0;
    for (unsigned int f = 0; f < 9; ++f)
      unconverted = std::max(unconverted, paletteError(model, *scene, zedemo::frameTime(model.animation, f, 9), size));
    EXPECT_GT(unconverted, 0.05) << name;
    std::printf("  %-36s palette %.2e (unconverted rotations %.2e), skinning %.2e\n", name, palette, unconverted,
                skinning);
  }
}

TEST_F(Demo, InfluencesArePackedFourPerVertexByWeight) {
  SKIP_WITHOUT_CHARACTERS();
  // Many of this file's vertices have five or six influences.
  const std::string path = std::string(ZE_DEMO_MODELS) + "/FBX/animation_with_skeleton.fbx";
  zedemo::Model model;
  std::string error;
  ASSERT_TRUE(zedemo::loadModel(path, 0, model, error)) << error;
  Assimp::Importer importer;
  const aiScene* scene = importer.ReadFile(path, zedemo::modelImportFlags());
  ASSERT_NE(scene, nullptr);
  const aiMesh& source = *scene->mMeshes[0];
  std::vector<std::map<unsigned int, float>> raw(source.mNumVertices);  // bone -> weight, per vertex
  for (unsigned int b = 0; b < source.mNumBones; ++b)
    for (unsigned int w = 0; w < source.mBones[b]->mNumWeights; ++w)
      raw[source.mBones[b]->mWeights[w].mVertexId][b] = source.mBones[b]->mWeights[w].mWeight;
  const zedemo::SkinnedMesh& mesh = model.meshes[0];
  ASSERT_EQ(mesh.batches.size(), 1u);
  unsigned int over = 0;
  for (unsigned int v = 0; v < source.mNumVertices; ++v) {
    over += raw[v].size() > zedemo::kInfluences;
    float sum = 0, previous = 2, smallestKept = 2;
    for (unsigned int k = 0; k < zedemo::kInfluences; ++k) {
      const float w = mesh.weights[v * zedemo::kInfluences + k];
      const unsigned int bone = mesh.batches[0].bones[mesh.indices[v * zedemo::kInfluences + k]];
      sum += w;
      EXPECT_LE(w, previous) << "vertex " << v << ": weights fall";
      previous = w;
      if (w == 0) continue;
      smallestKept = w;
      ASSERT_EQ(raw[v].count(bone), 1u) << "vertex " << v << ": a bone the file does not give it";
      // Renormalising keeps the ratios of the weights the file gives.
      const unsigned int heaviest = mesh.batches[0].bones[mesh.indices[v * zedemo::kInfluences]];
      EXPECT_NEAR(w / mesh.weights[v * zedemo::kInfluences], raw[v][bone] / raw[v][heaviest], 1e-5f);
    }
    EXPECT_NEAR(sum, 1.0f, 1e-6f) << "vertex " << v;
    // Whatever was left out weighs no more than what was kept.
    std::vector<float> all;
    for (const auto& [bone, w] : raw[v]) all.push_back(w);
    std::sort(all.rbegin(), all.rend());
    if (all.size() > zedemo::kInfluences) {
      EXPECT_LE(all[zedemo::kInfluences] / all[0], smallestKept / mesh.weights[v * zedemo::kInfluences]);
    }
  }
  EXPECT_GT(over, 0u);
  EXPECT_EQ(mesh.clampedVertices, over);
}

TEST_F(Demo, MeshesWithMoreBonesThanAPaletteSkinInBatches) {
  libZEMath_bayRegister();
  const std::string path = writeSmd("zeDemoTestBig.smd", 300, 4, 6);
  zedemo::Model model;
  std::string error;
  ASSERT_TRUE(zedemo::loadModel(path, 0, model, error)) << error;
  ASSERT_EQ(model.meshes.size(), 1u);
  const zedemo::SkinnedMesh& mesh = model.meshes[0];
  EXPECT_EQ(mesh.fileBones, 300u);
  EXPECT_EQ(mesh.clampedVertices, mesh.positions.size()) << "six influences each";
  ASSERT_GE(mesh.batches.size(), 2u);
  unsigned int next = 0;
  for (const zedemo::Batch& batch : mesh.batches) {
    EXPECT_EQ(batch.first, next);
    EXPECT_LE(batch.bones.size(), zedemo::kPaletteLimit);
    next = batch.first + batch.count;
  }
  EXPECT_EQ(next, mesh.positions.size());
  Assimp::Importer importer;
  const aiScene* scene = importer.ReadFile(path, zedemo::modelImportFlags());
  ASSERT_NE(scene, nullptr);
  for (unsigned int f = 0; f < 5; ++f) {
    const double time = zedemo::frameTime(model.animation, f, 5);
    EXPECT_LT(paletteError(model, *scene, time, restSize(model)), 5e-3) << time;
    EXPECT_LT(skinningError(model, time), 1e-6) << time;
  }

  int status = -1;
  const std::string output = runDemo("--model " + path + " --frames 3", status);
  std::remove(path.c_str());
  ASSERT_EQ(status, 0) << output;
  EXPECT_EQ(modelValue(output, "batches"), long(mesh.batches.size()));
  EXPECT_EQ(modelValue(output, "clamped"), long(mesh.positions.size()));
  EXPECT_NE(output.find("batches of consecutive"), std::string::npos) << output;
  EXPECT_NE(output.find("kept the 4 largest, renormalised"), std::string::npos) << output;
}

TEST_F(Demo, PlaysAPackagedCharacterAndDrawsItsContactSheet) {
  SKIP_WITHOUT_CHARACTERS();
  const std::string image = std::string(::testing::TempDir()) + "zeDemoTestSheet.png";
  for (const char* name : {"X/BCN_Epileptic.X", "FBX/animation_with_skeleton.fbx"}) {
    const std::string path = std::string(ZE_DEMO_MODELS) + "/" + name;
    Assimp::Importer importer;
    const aiScene* scene = importer.ReadFile(path, zedemo::modelImportFlags());
    ASSERT_NE(scene, nullptr) << name;
    long vertices = 0, bones = 0;
    for (unsigned int m = 0; m < scene->mNumMeshes; ++m)
      vertices += scene->mMeshes[m]->mNumVertices, bones += scene->mMeshes[m]->mNumBones;
    std::remove(image.c_str());
    int status = -1;
    const std::string output = runDemo("--model " + path + " --frames 5 --image " + image, status);
    ASSERT_EQ(status, 0) << output;
    EXPECT_EQ(modelValue(output, "meshes"), long(scene->mNumMeshes)) << name;
    EXPECT_EQ(modelValue(output, "vertices"), vertices) << name;
    EXPECT_EQ(modelValue(output, "bones"), bones) << name;
    EXPECT_EQ(modelValue(output, "frames"), 5) << name;
    EXPECT_EQ(modelValue(output, "inside") + modelValue(output, "partial") + modelValue(output, "outside"),
              5 * long(scene->mNumMeshes))
        << name;
    EXPECT_NE(output.find(" batch=agrees\n"), std::string::npos) << name;
    for (const char* stage : {"sampling the keys", "composing the hierarchy", "building the palettes", "skinning",
                              "bounds", "culling", "million vertices per second"})
      EXPECT_NE(output.find(stage), std::string::npos) << name << ": " << stage;
    std::ifstream png(image, std::ios::binary);
    char signature[8] = {};
    png.read(signature, 8);
    EXPECT_EQ(std::memcmp(signature, "\x89PNG\r\n\x1a\n", 8), 0) << name;
  }
  std::remove(image.c_str());
}

TEST_F(Demo, RefusesModelsItCannotPlayWithAMessage) {
  const std::string dir = ::testing::TempDir();
  const std::string text = dir + "zeDemoTestNotAModel.txt", cube = dir + "zeDemoTestCube.obj";
  std::ofstream(text) << "These are words, not a model.\n";
  std::ofstream(cube) << "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
  const std::string still = writeSmd("zeDemoTestStill.smd", 3, 1, 2),
                    moving = writeSmd("zeDemoTestMoving.smd", 3, 2, 2);
  const struct {
    std::string arguments, says;
  } cases[] = {
      {"--model " + dir + "zeDemoTestMissing.x", "no such file"},
      {"--model " + dir, "not a file"},
      {"--model " + text, "not a model Assimp can read"},
      {"--model " + cube, "no bones"},
      {"--model " + still, "single pose"},
      {"--model " + moving + " --animation 3", "there is no animation 3"},
      {"--model " + moving + " --frames 0", "--frames"},
      {"--frames 4", "--frames"},
  };
  for (const auto& c : cases) {
    int status = 0;
    const std::string output = runDemo(c.arguments, status);
    EXPECT_TRUE(WIFEXITED(status)) << c.arguments << ": the demo must not crash";
    EXPECT_NE(status, 0) << c.arguments;
    EXPECT_NE(output.find(c.says), std::string::npos) << c.arguments << ":\n" << output;
    EXPECT_EQ(output.find("\nmodel "), std::string::npos) << c.arguments;
  }
  for (const std::string& file : {text, cube, still, moving}) std::remove(file.c_str());
}
