#include "DemoModelRun.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include <math/ZEMath.h>

#include "DemoAnimation.h"
#include "DemoContactSheet.h"
#include "DemoFraming.h"
#include "DemoModel.h"
#include "DemoScene.h"
#include "DemoSkeleton.h"
#include "DemoSkinning.h"

using namespace Lux;
using namespace Lux::Math;

namespace zedemo {

namespace {

/// The contact sheet: six frames, three to a row, in cells of 320 x 360.
constexpr unsigned int kSheetFrames = 6;
constexpr int kSheetColumns = 3;
constexpr int kSheetWidth = 960;
constexpr int kSheetHeight = 720;

/// The stages of a frame, in the order they run.
enum Stage { kSampling, kHierarchy, kPalette, kSkinning, kBounds, kCulling };

/// Everything a frame computes, allocated once; each stage of the frame is
/// one member.
struct Frame {
  explicit Frame(const Model& m)
      : model(m), locals(restLocals(m)), worlds(m.nodes.size()), values(m.meshes.size()), culled(m.meshes.size()) {
    for (const SkinnedMesh& mesh : m.meshes) {
      palettes.emplace_back(mesh.paletteSize());
      skinned.emplace_back(mesh.positions.size());
      boxes.push_back(create<zeAABox>());
    }
  }
  void sample(double time) { sampleAnimation(model.animation, time, locals); }
  void compose() { composeWorlds(model.nodes, locals, worlds); }
  void palette() {
    for (std::size_t m = 0; m < palettes.size(); ++m) buildPalette(model.meshes[m], worlds, palettes[m].data());
  }
  void skin() {
    for (std::size_t m = 0; m < skinned.size(); ++m)
      skinMesh(model.meshes[m], palettes[m].data(), skinned[m].data(), zeVectorBlending::_vectorBlendingFunction,
               zeVectorBlending::_vectorBlendingOneWeightFunction);
  }
  void bounds() {
    for (std::size_t m = 0; m < skinned.size(); ++m)
      meshBounds(skinned[m].data(), static_cast<unsigned int>(skinned[m].size()), *boxes[m]);
  }
  /// Every mesh's box against the frustum in one call of the batch kernel.
  bool cull(const Camera& camera) {
    for (std::size_t m = 0; m < boxes.size(); ++m) values[m] = {boxes[m]->_min, boxes[m]->_max};
    return zeCulling::_cullAABoxesFunction(values.data(), static_cast<unsigned int>(values.size()),
                                           frustumOf(camera).data(), 6, culled.data());
  }
  /// The meshes whose culling the dispatch tables answer otherwise.
  unsigned int cullingDifferences(const Camera& camera) const {
    unsigned int differ = 0;
    for (std::size_t m = 0; m < boxes.size(); ++m) differ += culled[m] != cullVolume(camera, boxes[m].get());
    return differ;
  }
  /// What the contact sheet keeps of this frame.
  SheetFrame keep(double time) const {
    SheetFrame frame;
    frame.time = time;
    frame.positions = skinned;
    for (const zeSmartPointer<zeAABox>& box : boxes) {
      frame.lo.push_back(box->_min);
      frame.hi.push_back(box->_max);
    }
    frame.culled = culled;
    return frame;
  }

  const Model& model;
  std::vector<zeMatrix44f> locals, worlds;
  std::vector<std::vector<zeMatrix44f>> palettes;  ///< per mesh
  std::vector<std::vector<zeVec3f>> skinned;       ///< per mesh
  std::vector<zeSmartPointer<zeAABox>> boxes;      ///< per mesh
  std::vector<zeAABoxValue> values;                ///< per mesh: its box, for the batch kernel
  std::vector<unsigned char> culled;               ///< per mesh
};

void describe(const Model& model, const std::string& path) {
  std::printf("  %s: %zu nodes, %zu meshes, %zu vertices, %u bones\n", path.c_str(), model.nodes.size(),
              model.meshes.size(), model.vertexCount(), model.boneCount());
  for (const SkinnedMesh& mesh : model.meshes) {
    std::printf("    mesh '%s': %zu vertices, %zu triangles, %u bones, %zu batch(es)\n", mesh.name.c_str(),
                mesh.positions.size(), mesh.triangles.size() / 3, mesh.fileBones, mesh.batches.size());
    if (mesh.batches.size() > 1)
      std::printf(
          "      more bones than one kernel call can index (%u): skinned in %zu batches of consecutive\n"
          "      vertices, each with a palette of at most %u matrices\n",
          kPaletteLimit, mesh.batches.size(), kPaletteLimit);
    if (mesh.clampedVertices)
      std::printf("      %u vertices had more than %u influences: kept the %u largest, renormalised\n",
                  mesh.clampedVertices, kInfluences, kInfluences);
    if (mesh.droppedInfluences)
      std::printf("      %u influences at or below the kernel's threshold %g dropped, the rest renormalised\n",
                  mesh.droppedInfluences, double(zeBlendWeightThreshold));
    if (mesh.unweightedVertices)
      std::printf("      %u vertices no bone moves: they follow the mesh's node\n", mesh.unweightedVertices);
  }
  const Animation& a = model.animation;
  const double perSecond = a.ticksPerSecond > 0 ? a.ticksPerSecond : 25.0;
  std::printf("  animation '%s' (%u of %zu): %zu channels, %g ticks at %g per second%s: %.2f s\n", a.name.c_str(),
              model.animationIndex + 1, model.animationNames.size(), a.channels.size(), a.duration, perSecond,
              a.ticksPerSecond > 0 ? "" : " (the file says none; taken as 25)", a.duration / perSecond);
  for (const std::string& note : model.notes) std::printf("  note: %s\n", note.c_str());
  unsigned int batches = 0, single = 0;
  for (const SkinnedMesh& mesh : model.meshes)
    for (const Batch& b : mesh.batches) ++batches, single += b.oneInfluence;
  std::printf(
      "  kernels: the published weighted kernel on %u batch(es), the one-influence kernel on %u;\n"
      "  sources are 4-vectors on 64-byte boundaries, %u influences per vertex, positions 12 bytes apart\n",
      batches - single, single, kInfluences);
}

/// The frames the contact sheet shows: evenly spread, first and last included.
std::vector<unsigned int> sheetFrames(unsigned int frames) {
  std::vector<unsigned int> picked;
  const unsigned int n = std::min(frames, kSheetFrames);
  for (unsigned int i = 0; i < n; ++i) picked.push_back(n > 1 ? i * (frames - 1) / (n - 1) : 0);
  return picked;
}

/// A camera that sees the model in every frame of the sheet.
Camera frameModel(const Model& model, Frame& frame, const std::vector<unsigned int>& picked, unsigned int frames) {
  zeVec3f lo, hi;
  bool first = true;
  for (unsigned int f : picked) {
    frame.sample(frameTime(model.animation, f, frames));
    frame.compose();
    frame.palette();
    frame.skin();
    frame.bounds();
    for (const zeSmartPointer<zeAABox>& box : frame.boxes) {
      for (int i = 0; i < 3; ++i) {
        lo[i] = first ? box->_min[i] : std::min(lo[i], box->_min[i]);
        hi[i] = first ? box->_max[i] : std::max(hi[i], box->_max[i]);
      }
      first = false;
    }
  }
  if (!(lo.x <= hi.x && lo.y <= hi.y && lo.z <= hi.z)) {  // nothing finite to frame
    lo = zeVec3f(-1, -1, -1);
    hi = zeVec3f(1, 1, 1);
  }
  std::printf("  the sheet's frames lie within (%.3f, %.3f, %.3f) to (%.3f, %.3f, %.3f); up is %c%c\n", lo.x, lo.y,
              lo.z, hi.x, hi.y, hi.z, model.upSign > 0 ? '+' : '-', "xyz"[model.upAxis]);
  return frameCamera(lo, hi, model.upAxis, model.upSign, kSheetWidth / kSheetColumns,
                     kSheetHeight / int((picked.size() + kSheetColumns - 1) / kSheetColumns));
}

}  // namespace

int runModel(const ModelOptions& options, StageTimer& timer) {
  timer.begin("loading the model");
  Model model;
  std::string error;
  if (!loadModel(options.path, options.animation, model, error)) {
    std::fflush(stdout);
    std::fprintf(stderr, "zeDemo: %s: %s\n", options.path.c_str(), error.c_str());
    return 1;
  }
  describe(model, options.path);
  timer.end();

  timer.begin("framing the camera");
  Frame frame(model);
  const std::vector<unsigned int> picked = sheetFrames(options.frames);
  const Camera camera = frameModel(model, frame, picked, options.frames);
  timer.end();

  timer.begin("playing the animation");
  FrameStages stages(
      {"sampling the keys", "composing the hierarchy", "building the palettes", "skinning", "bounds", "culling"},
      options.frames);
  unsigned long culled[3] = {0, 0, 0};
  unsigned long cullingDifferences = 0;  // mesh-frames the batch kernel and the dispatch tables answer apart
  std::vector<SheetFrame> sheet;
  std::size_t next = 0;
  for (unsigned int f = 0; f < options.frames; ++f) {
    const double time = frameTime(model.animation, f, options.frames);
    stages.beginFrame();
    frame.sample(time);
    stages.lap(kSampling);
    frame.compose();
    stages.lap(kHierarchy);
    frame.palette();
    stages.lap(kPalette);
    frame.skin();
    stages.lap(kSkinning);
    frame.bounds();
    stages.lap(kBounds);
    const bool culledAll = frame.cull(camera);
    stages.lap(kCulling);
    stages.endFrame();
    cullingDifferences += culledAll ? frame.cullingDifferences(camera) : model.meshes.size();
    for (unsigned char c : frame.culled) ++culled[c];
    if (next < picked.size() && picked[next] == f) {
      sheet.push_back(frame.keep(time));
      ++next;
    }
  }
  std::printf("  %u frames of %zu vertices in %zu meshes\n", options.frames, model.vertexCount(), model.meshes.size());
  stages.print();
  const double perSecond = double(model.vertexCount()) / (stages.median(kSkinning) * 1e-6);
  std::printf("  skinning throughput on the model's weights (median frame): %.1f million vertices per second\n",
              perSecond * 1e-6);
  std::printf("  culled mesh-frames: inside %lu, partial %lu, outside %lu\n", culled[ZE_MATH_CONTAINMENT_RESULTS_ALL],
              culled[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL], culled[ZE_MATH_CONTAINMENT_RESULTS_NONE]);
  if (cullingDifferences == 0)
    std::printf("  the batch culling kernel gave every mesh-frame's answer through the dispatch tables\n");
  else
    std::printf("  the batch culling kernel DIFFERS from the dispatch tables on %lu mesh-frames\n", cullingDifferences);
  timer.end();

  if (!options.image.empty()) {
    timer.begin("drawing the contact sheet");
    Image image(kSheetWidth, kSheetHeight);
    drawContactSheet(image, kSheetColumns, camera, model, sheet);
    if (!image.writePng(options.image)) {
      std::fflush(stdout);
      std::fprintf(stderr, "zeDemo: cannot write %s\n", options.image.c_str());
      return 1;
    }
    std::printf("  wrote %s: frames", options.image.c_str());
    for (const SheetFrame& s : sheet) std::printf(" %g", s.time);
    std::printf(" (ticks), left to right, top to bottom\n");
    timer.end();
  }

  unsigned int batches = 0, clamped = 0, unweighted = 0;
  for (const SkinnedMesh& mesh : model.meshes) {
    batches += static_cast<unsigned int>(mesh.batches.size());
    clamped += mesh.clampedVertices;
    unweighted += mesh.unweightedVertices;
  }
  std::printf("\n== summary\n");
  timer.print();
  // One line for scripts and the test.
  std::printf(
      "model meshes=%zu vertices=%zu bones=%u batches=%u frames=%u clamped=%u unweighted=%u inside=%lu partial=%lu "
      "outside=%lu batch=%s\n",
      model.meshes.size(), model.vertexCount(), model.boneCount(), batches, options.frames, clamped, unweighted,
      culled[ZE_MATH_CONTAINMENT_RESULTS_ALL], culled[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL],
      culled[ZE_MATH_CONTAINMENT_RESULTS_NONE], cullingDifferences == 0 ? "agrees" : "differs");
  return cullingDifferences == 0 ? 0 : 1;
}

}  // namespace zedemo
