// The demo program: run with small counts, its culling counts must match the
// same frustum culling done here, volume by volume; bad options must fail.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include <math/ZEMath.h>

#include "demo/DemoScene.h"
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

/// The number after "key=" on the demo's counts line, or -1.
long countOf(const std::string& output, const char* key) {
  const std::size_t line = output.find("\ncounts ");
  if (line == std::string::npos) return -1;
  const std::size_t at = output.find(std::string(" ") + key + "=", line);
  return at == std::string::npos ? -1 : std::strtol(output.c_str() + at + std::strlen(key) + 2, nullptr, 10);
}

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
