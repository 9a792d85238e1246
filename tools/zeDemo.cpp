// The demo: what an engine does with the library, end to end. It loads the
// library through the core and registers it, lists what registered, builds a
// camera and its frustum, culls a field of boxes and spheres through the
// dispatch tables, picks a level of detail per visible sphere, morphs and
// skins a mesh through the published kernels, round-trips a box and a sphere
// through text and byte-swapped records, and can draw the result as a PNG.
// Given a model file (--model), it plays the model's animation instead:
// keys sampled, hierarchy composed, palettes built, meshes skinned, bounded
// and culled each frame, every stage timed, and a contact sheet drawn.

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <math/ZEMath.h>
#include <CLI/CLI.hpp>

#include "demo/DemoImage.h"
#include "demo/DemoMesh.h"
#include "demo/DemoModelRun.h"
#include "demo/DemoReport.h"
#include "demo/DemoScene.h"

using namespace Lux;
using namespace Lux::Math;
using namespace zedemo;

namespace {

struct Options {
  unsigned long long seed = kDefaultSeed;
  unsigned int volumes = 100000;
  unsigned int vertices = 100000;
  std::string image;
  ModelOptions model;  ///< used when model.path is set
};

/// How many volumes the picture draws: enough to read, few enough to see.
constexpr unsigned int kDrawnVolumes = 800;

/// The counts the summary reports.
struct Counts {
  unsigned long culled[3] = {0, 0, 0};  // none, partial, all
  unsigned long lod[4] = {0, 0, 0, 0};
  bool recordsUnchanged = false;
};

bool loadLibrary() {
  zeSmartPointer<zeLibrary> library = zeLibrary::load(ZE_DEMO_LIBRARY_PATH);
  if (!library) library = zeLibrary::load("libZEMath.so");
  if (!library) {
    std::fprintf(stderr, "zeDemo: cannot load libZEMath.so\n");
    return false;
  }
  std::printf("  loaded libZEMath.so\n");
  // An engine asks once at start-up whether its build gives the inline
  // operations the library's bits (its flags may lack -ffp-contract=off).
  const unsigned int inexact = zeCheckExactResults();
  std::printf("  inline operations: %s", inexact ? "other bits than the library's in" : "the library's bits");
  for (unsigned int family = 1; family <= inexact; family <<= 1)
    if (inexact & family) std::printf(" %s", zeExactFamilyName(family));
  std::printf("\n");
  const bool registered = library->registerClasses() == kSuccess;
  std::printf("  registration %s: %d classes\n", registered ? "ran" : "FAILED", zeMetaObject::getClassCount());
  return registered;
}

void listClasses() {
  std::printf("  classes, in registration order:\n   ");
  int column = 3;
  for (int i = 0; i < zeMetaObject::getClassCount(); ++i) {
    const char* name = zeMetaObject::getClass(i)->getName();
    const int width = static_cast<int>(std::strlen(name)) + 1;
    if (column + width > 100) {
      std::printf("\n   ");
      column = 3;
    }
    std::printf(" %s", name);
    column += width;
  }
  std::printf("\n  volume type indices:\n");
  const zeMetaObject* volume = zeVolume::getClassMeta();
  for (int i = 0; i < zeMetaObject::getClassCount(); ++i) {
    const zeMetaObject* meta = zeMetaObject::getClass(i);
    if (meta != volume && meta->isOfType(volume))
      std::printf("    %-10s %u\n", meta->getName(), zeVolume::getTypeIndex(meta));
  }
  std::printf("  enums:\n");
  for (zeMetaEnum* e : {getZE_MATH_CONTAINMENT_RESULTSMetaEnum(), getZE_MATH_SPATIAL_REGIONMetaEnum(),
                        getZE_MATH_PLANAR_REGIONMetaEnum(), getZE_MATH_COLORSPACE_FORMATMetaEnum(),
                        getZE_MATH_MATRIX_DECOMPOSITIONMetaEnum()}) {
    std::printf("    %s:", e->getName());
    // The constants repeat the enum's name: print only what follows it.
    const std::size_t prefix = std::strlen(e->getName()) + 1;
    for (int i = 0; i < e->getCount(); ++i) {
      const char* name = e->getValueName(i);
      std::printf(" %s", std::strncmp(name, e->getName(), prefix - 1) == 0 ? name + prefix : name);
    }
    std::printf("\n");
  }
}

void printCamera(const Camera& camera) {
  static const char* const names[6] = {"left", "right", "bottom", "top", "near", "far"};
  std::printf("  eye (0, 4, 24) looking at the origin, 50 degrees high, %dx%d, depth 1 to 60\n", camera.width,
              camera.height);
  for (int i = 0; i < 6; ++i) {
    const zePlane& p = *camera.planes[i];
    std::printf("    %-6s plane: normal (%8.5f, %8.5f, %8.5f), offset %9.5f\n", names[i], p._norm.x, p._norm.y,
                p._norm.z, p._offset);
  }
}

std::vector<unsigned char> cullAll(const Camera& camera, const std::vector<zeSmartPointer<zeVolume>>& volumes,
                                   Counts& counts) {
  std::vector<unsigned char> results(volumes.size());
  Progress progress("culling", volumes.size());
  for (std::size_t i = 0; i < volumes.size(); ++i) {
    results[i] = static_cast<unsigned char>(cullVolume(camera, volumes[i].get()));
    ++counts.culled[results[i]];
    if (i % 1024 == 1023 || i + 1 == volumes.size()) progress.update(i + 1);
  }
  std::printf("  inside %lu, partial %lu, outside %lu\n", counts.culled[ZE_MATH_CONTAINMENT_RESULTS_ALL],
              counts.culled[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL], counts.culled[ZE_MATH_CONTAINMENT_RESULTS_NONE]);
  return results;
}

/// Level 0 for spheres at least 48 pixels across, 1 from 12, 2 from 3, and 3
/// (a point or an impostor) below.
void pickLevelsOfDetail(const Camera& camera, const std::vector<zeSmartPointer<zeVolume>>& volumes,
                        const std::vector<unsigned char>& results, Counts& counts) {
  zeVec4f pixelScale;
  pixelScale.makePixelToModelScale(camera.view, camera.projection, camera.width, camera.height);
  const zeMetaObject* sphereClass = zeSphere::getClassMeta();
  for (std::size_t i = 0; i < volumes.size(); ++i) {
    if (results[i] == ZE_MATH_CONTAINMENT_RESULTS_NONE || volumes[i]->getMetaObject() != sphereClass) continue;
    const zeSphere& sphere = *static_cast<const zeSphere*>(volumes[i].get());
    const float pixels = pixelScale.computePixelSpaceDiameter(sphere._center, 2.0f * sphere._radius);
    ++counts.lod[pixels >= 48.0f ? 0 : pixels >= 12.0f ? 1 : pixels >= 3.0f ? 2 : 3];
  }
  std::printf("  visible spheres by level: 0: %lu, 1: %lu, 2: %lu, 3: %lu\n", counts.lod[0], counts.lod[1],
              counts.lod[2], counts.lod[3]);
}

/// What a kernel did per second, from the time of its stage alone.
void printThroughput(const char* kernel, std::size_t vertices, double milliseconds) {
  if (milliseconds > 0)
    std::printf("  %s kernel: %zu vertices in %.3f ms, %.1f million vertices per second\n", kernel, vertices,
                milliseconds, double(vertices) / (milliseconds * 1e-3) * 1e-6);
}

/// Writes `object` byte-swapped into a record, reads it into `copy` and
/// tells whether the copy is alike field by field.
bool roundTrip(zeObject& object, zeObject& copy) {
  std::vector<unsigned char> record(object.getRecordSize());
  if (record.empty() || object.writeRecord(record.data(), record.size(), true) != kSuccess) return false;
  if (copy.readRecord(record.data(), record.size(), true) != kSuccess) return false;
  const bool alike = copy.isAlikeTo(&object, zeObject::kCopyDeep);
  std::printf("  %s: %zu-byte swapped record read back %s\n", object.getMetaObject()->getName(), record.size(),
              alike ? "unchanged" : "CHANGED");
  return alike;
}

bool textAndRecords() {
  zeSmartPointer<zeAABox> box = create<zeAABox>(), boxCopy = create<zeAABox>();
  box->_min = zeVec3f(-1.5f, 0.25f, -3.0f);
  box->_max = zeVec3f(2.0f, 1.75f, 0.5f);
  zeSmartPointer<zeSphere> sphere = create<zeSphere>(), sphereCopy = create<zeSphere>();
  sphere->_center = zeVec3f(0.1f, -2.0f, 7.25f);
  sphere->_radius = 1.0f / 3.0f;
  std::printf("  box as text:\n");
  std::fflush(stdout);
  box->printFields(4);
  std::printf("  sphere as text:\n");
  std::fflush(stdout);
  sphere->printFields(4);
  std::fflush(stdout);
  const bool boxSame = roundTrip(*box, *boxCopy);
  const bool sphereSame = roundTrip(*sphere, *sphereCopy);
  return boxSame && sphereSame;
}

int run(const Options& options) {
  StageTimer timer;
  Counts counts;
  timer.begin("loading and registering the library");
  if (!loadLibrary()) return 1;
  timer.end();

  if (!options.model.path.empty()) return runModel(options.model, timer);

  timer.begin("registered classes, volume types and enums");
  listClasses();
  timer.end();

  timer.begin("camera and frustum");
  const Camera camera = makeCamera(kViewWidth, kViewHeight);
  printCamera(camera);
  timer.end();

  timer.begin("making the volumes");
  const std::vector<zeSmartPointer<zeVolume>> volumes = makeVolumes(options.seed, options.volumes);
  std::printf("  %zu boxes and spheres from seed %llu\n", volumes.size(), options.seed);
  timer.end();

  timer.begin("culling against the frustum");
  const std::vector<unsigned char> results = cullAll(camera, volumes, counts);
  timer.end();

  timer.begin("levels of detail");
  pickLevelsOfDetail(camera, volumes, results, counts);
  timer.end();

  timer.begin("building the mesh");
  Mesh mesh = makeMesh(options.vertices, 0.7f);
  std::printf("  a tube of %zu vertices, two bones, two morph targets\n", mesh.rest.size());
  timer.end();

  // Each kernel's stage holds its call alone.
  timer.begin("morphing the mesh");
  morphMesh(mesh, 1.0f, 1.0f);
  timer.end();
  printThroughput("morphing", mesh.rest.size(), timer.lastMilliseconds());

  timer.begin("skinning the mesh");
  skinMesh(mesh);
  timer.end();
  printThroughput("skinning", mesh.rest.size(), timer.lastMilliseconds());
  if (!mesh.rest.empty()) {
    const zeVec3f& top = mesh.skinned.back();
    std::printf("  the top ring's last vertex moved from (%.3f, %.3f, %.3f) to (%.3f, %.3f, %.3f)\n",
                mesh.rest.back().x, mesh.rest.back().y, mesh.rest.back().z, top.x, top.y, top.z);
  }

  timer.begin("text and byte-swapped records");
  counts.recordsUnchanged = textAndRecords();
  timer.end();

  if (!options.image.empty()) {
    timer.begin("drawing the picture");
    Image image(kViewWidth, kViewHeight);
    drawScene(image, camera, volumes, results, kDrawnVolumes, mesh);
    if (!image.writePng(options.image)) {
      std::fprintf(stderr, "zeDemo: cannot write %s\n", options.image.c_str());
      return 1;
    }
    std::printf("  wrote %s\n", options.image.c_str());
    timer.end();
  }

  std::printf("\n== summary\n");
  timer.print();
  // One line for scripts and the test.
  std::printf(
      "counts volumes=%zu inside=%lu partial=%lu outside=%lu lod0=%lu lod1=%lu lod2=%lu lod3=%lu "
      "vertices=%zu records=%s\n",
      volumes.size(), counts.culled[ZE_MATH_CONTAINMENT_RESULTS_ALL],
      counts.culled[ZE_MATH_CONTAINMENT_RESULTS_PARTIAL], counts.culled[ZE_MATH_CONTAINMENT_RESULTS_NONE],
      counts.lod[0], counts.lod[1], counts.lod[2], counts.lod[3], mesh.rest.size(),
      counts.recordsUnchanged ? "unchanged" : "changed");
  return counts.recordsUnchanged ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app{
      "ZEMath demo: culling, levels of detail, skinning and records on a built-in scene, or an animated model "
      "played frame by frame (--model)"};
  CLI::Option* model = app.add_option("--model", options.model.path,
                                      "play the animation of this skinned model (any format Assimp reads)");
  app.add_option("--frames", options.model.frames, "frames of the model's animation, first and last key included")
      ->capture_default_str()
      ->check(CLI::Range(1u, 1000000u))
      ->needs(model);
  app.add_option("--animation", options.model.animation, "which of the model's animations plays, from 0")
      ->capture_default_str()
      ->needs(model);
  app.add_option("--seed", options.seed, "seed of the random scene")->capture_default_str()->excludes(model);
  app.add_option("--boxes", options.volumes, "number of random volumes, boxes and spheres alternately")
      ->capture_default_str()
      ->check(CLI::Range(0u, 20000000u))
      ->excludes(model);
  app.add_option("--vertices", options.vertices, "vertices of the skinned mesh")
      ->capture_default_str()
      ->check(CLI::Range(0u, 20000000u))
      ->excludes(model);
  app.add_option("--image", options.image,
                 "write a PNG: the scene seen through the camera, or a contact sheet of the model's animation");
  CLI11_PARSE(app, argc, argv);
  options.model.image = options.image;

  const int status = run(options);
  // Everything the run made is gone by now; give the registry back too.
  BayCore::unregisterAllClasses();
  return status;
}
