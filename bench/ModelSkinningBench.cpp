// Skinning on the weights of real characters: each packaged model (or each
// --model=PATH given), read through the demo's loader and posed halfway
// through its animation, skinned mesh by mesh and batch by batch through the
// demo's skinning stage: with the plain scalar loops (the baseline), with each
// instruction-set path, and with the published kernels, as the demo does each
// frame. Without any model it says so and measures nothing.
//
// Benchmark names: ModelSkin/<variant>/<model>; items are vertices.

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <math/ZEMath.h>
#include <math/kernels/impl/BlendingPaths.h>

#include "demo/DemoAnimation.h"
#include "demo/DemoModel.h"
#include "demo/DemoSkeleton.h"
#include "demo/DemoSkinning.h"

using namespace Lux::Math;

namespace {

/// The packaged characters measured when no --model is given.
const char* const kCharacters[] = {"X/Testwuson.X", "X/BCN_Epileptic.X", "FBX/animation_with_skeleton.fbx"};

/// A model in one pose, with room for its skinned positions.
struct Posed {
  std::string name;
  zedemo::Model model;
  std::vector<std::vector<zeMatrix44f>> palettes;  ///< per mesh
  std::vector<std::vector<zeVec3f>> skinned;       ///< per mesh
};

std::unique_ptr<Posed> pose(const std::string& path) {
  auto posed = std::make_unique<Posed>();
  std::string error;
  if (!zedemo::loadModel(path, 0, posed->model, error)) {
    std::fprintf(stderr, "ModelSkinningBench: %s: %s\n", path.c_str(), error.c_str());
    return nullptr;
  }
  posed->name = std::filesystem::path(path).filename().string();
  const zedemo::Model& model = posed->model;
  std::vector<zeMatrix44f> locals = zedemo::restLocals(model), worlds(model.nodes.size());
  zedemo::sampleAnimation(model.animation, zedemo::frameTime(model.animation, 1, 3), locals);
  zedemo::composeWorlds(model.nodes, locals, worlds);
  for (const zedemo::SkinnedMesh& mesh : model.meshes) {
    posed->palettes.emplace_back(mesh.paletteSize());
    zedemo::buildPalette(mesh, worlds, posed->palettes.back().data());
    posed->skinned.emplace_back(mesh.positions.size());
  }
  return posed;
}

void skinAll(benchmark::State& state, Posed* posed, impl::BlendPathFunction weighted, impl::BlendPathFunction one) {
  for (auto _ : state) {
    for (std::size_t m = 0; m < posed->model.meshes.size(); ++m)
      zedemo::skinMesh(posed->model.meshes[m], posed->palettes[m].data(), posed->skinned[m].data(), weighted, one);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(std::int64_t(state.iterations()) * std::int64_t(posed->model.vertexCount()));
}

}  // namespace

int main(int argc, char** argv) {
  // --model=PATH (any number of times) is ours; the rest goes to the benchmark library.
  std::vector<std::string> paths;
  int kept = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--model=", 8) == 0)
      paths.emplace_back(argv[i] + 8);
    else
      argv[kept++] = argv[i];
  }
  argc = kept;
  if (paths.empty())
    for (const char* name : kCharacters)
      if (std::filesystem::exists(std::string(ZE_DEMO_MODELS) + "/" + name))
        paths.push_back(std::string(ZE_DEMO_MODELS) + "/" + name);

  zeVectorBlending::userRegister();
  std::vector<std::unique_ptr<Posed>> posed;
  for (const std::string& path : paths)
    if (auto p = pose(path)) posed.push_back(std::move(p));
  if (posed.empty()) {
    std::printf("ModelSkinningBench: no model to skin (the packaged characters under " ZE_DEMO_MODELS
                " are missing: install assimp-testmodels, or pass --model=PATH); nothing measured\n");
    return 0;
  }
  for (const auto& p : posed) {
    Posed* m = p.get();
    benchmark::RegisterBenchmark(("ModelSkin/Scalar/" + m->name).c_str(), &skinAll, m, &impl::blendScalar,
                                 &impl::blendOneWeightScalar);
    const impl::PathTable<impl::BlendKernels>& paths = impl::blendPaths();
    for (unsigned int i = 1; i < paths.count(); ++i) {
      const impl::PathTable<impl::BlendKernels>::Entry& path = paths.path(i);
      if (paths.available(i))
        benchmark::RegisterBenchmark(("ModelSkin/" + std::string(path.name) + "/" + m->name).c_str(), &skinAll, m,
                                     path.weighted, path.oneWeight);
    }
    benchmark::RegisterBenchmark(("ModelSkin/Published/" + m->name).c_str(), &skinAll, m,
                                 zeVectorBlending::_vectorBlendingFunction,
                                 zeVectorBlending::_vectorBlendingOneWeightFunction);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
