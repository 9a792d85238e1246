// Runs random and awkward inputs through every operation of the library that
// takes a sine, cosine, tangent or an inverse of one, in float and double,
// and writes the bits of every result; compares two such files. A library
// built with ZEMATH_PORTABLE_TRIG must give the same file on every processor
// and C library (scripts/trig-cpu-check.sh runs it with and without glibc's
// FMA variants).
//
//   zeTrigBits write FILE [--count N]   every result, and one hash per operation on stdout
//   zeTrigBits compare FILE FILE        per operation, how many calls differ; exit 1 if any

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "math/ZEMath.h"

using namespace Lux::Math;

namespace {

/// The operation whose bits are allowed to differ: the C library's functions
/// called directly, which show whether the environment changed them at all.
constexpr const char* kControl = "C library sin ... atan2 (control)";

/// The results of one operation: `width` values per call, each as its bits.
struct Operation {
  std::string name;
  int width = 0;
  std::vector<std::uint64_t> bits;
};

std::uint64_t bitsOf(float v) {
  std::uint32_t b;
  std::memcpy(&b, &v, sizeof b);
  return b;
}

std::uint64_t bitsOf(double v) {
  std::uint64_t b;
  std::memcpy(&b, &v, sizeof b);
  return b;
}

template <class T>
struct Twin;
template <>
struct Twin<float> {
  using M = zeMatrix44f;
  using V3 = zeVec3f;
  using Q = zeQuaternionf;
  static constexpr const char* name = "f";
};
template <>
struct Twin<double> {
  using M = zeMatrix44d;
  using V3 = zeVec3d;
  using Q = zeQuaterniond;
  static constexpr const char* name = "d";
};

/// The values of one call, appended to its operation.
class Recorder {
 public:
  explicit Recorder(std::vector<Operation>& ops) : ops_(ops) {}
  template <class... T>
  void record(const char* name, const char* twin, T... values) {
    Operation& op = find(std::string(name) + " (" + twin + ")", static_cast<int>(sizeof...(T)));
    (op.bits.push_back(bitsOf(values)), ...);
  }
  template <class M>
  void recordMatrix(const char* name, const char* twin, const M& m) {
    Operation& op = find(std::string(name) + " (" + twin + ")", 16);
    for (int i = 0; i < 16; ++i) op.bits.push_back(bitsOf(m[i]));
  }

 private:
  Operation& find(const std::string& name, int width) {
    for (Operation& op : ops_)
      if (op.name == name) return op;
    ops_.push_back({name, width, {}});
    return ops_.back();
  }
  std::vector<Operation>& ops_;
};

/// An angle: mostly ordinary turns, sometimes exact multiples of pi/2,
/// tiny, huge, zero of either sign, infinite or NaN.
template <class T>
T angle(std::mt19937_64& random) {
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  switch (random() % 16) {
    case 0:
      return static_cast<T>(1.5707963267948966 * static_cast<double>(random() % 9) - 6.283185307179586);
    case 1:
      return static_cast<T>(unit(random) * 1e-6);
    case 2:
      return static_cast<T>(unit(random) * 1e6);
    case 3:
      return static_cast<T>(unit(random) * 1e30);
    case 4: {
      const T special[] = {T(0),
                           -T(0),
                           std::numeric_limits<T>::infinity(),
                           std::numeric_limits<T>::quiet_NaN(),
                           T(1e-40),
                           T(3.14159265358979),
                           T(-1.5707963267948966)};
      return special[random() % 7];
    }
    default:
      return static_cast<T>(unit(random) * 7.0);
  }
}

template <class T>
T between(std::mt19937_64& random, double a, double b) {
  return static_cast<T>(std::uniform_real_distribution<double>(a, b)(random));
}

template <class T>
typename Twin<T>::V3 unitAxis(std::mt19937_64& random) {
  const double x = between<double>(random, -1, 1), y = between<double>(random, -1, 1),
               z = between<double>(random, -1, 1);
  const double n = std::sqrt(x * x + y * y + z * z) + 1e-9;
  return typename Twin<T>::V3(static_cast<T>(x / n), static_cast<T>(y / n), static_cast<T>(z / n));
}

template <class T>
void run(std::mt19937_64& random, Recorder& out) {
  using M = typename Twin<T>::M;
  using Q = typename Twin<T>::Q;
  const char* twin = Twin<T>::name;

  const T a = angle<T>(random), x = angle<T>(random), y = angle<T>(random), z = angle<T>(random);
  const auto axis = unitAxis<T>(random);

  M rotation;
  rotation.makeRotationRadians(a, axis);
  out.recordMatrix("makeRotationRadians(angle, axis)", twin, rotation);

  M euler;
  euler.makeRotationRadians(x, y, z);
  out.recordMatrix("makeRotationRadians(x, y, z)", twin, euler);

  M turned = rotation;
  turned.postRotationRadians(y, axis);
  turned.preRotationRadians(z, axis);
  out.recordMatrix("post/preRotationRadians", twin, turned);

  T rx, ry, rz;
  euler.getRotationRadians(rx, ry, rz);
  out.record("getRotationRadians (matrix)", twin, rx, ry, rz);

  // Compose from random parts, then decompose.
  T parts[12];
  for (int i = 0; i < 12; ++i) parts[i] = between<T>(random, -3, 3);
  for (int i = 6; i < 9; ++i) parts[i] = between<T>(random, 0.1, 3);
  M composed;
  composed.composeMatrixRadians(composed, parts);
  T back[12] = {};
  const int result = composed.decomposeMatrixRadians(composed, back);
  out.record("compose/decomposeMatrixRadians", twin, static_cast<T>(result), back[3], back[4], back[5], back[6],
             back[7], back[8], back[9], back[10], back[11]);

  M projection;
  const T fov = random() % 2 ? between<T>(random, 0.01, 3.1) : -T(1);
  projection.makePerspectiveProjectionRadians(fov, between<T>(random, 0.01, 3.1), between<T>(random, 0.2, 4),
                                              between<T>(random, 0.01, 1), between<T>(random, 10, 1000));
  out.recordMatrix("makePerspectiveProjectionRadians", twin, projection);

  Q q;
  q.setRotationRadians(x, y, z);
  T qx, qy, qz;
  q.getRotationRadians(qx, qy, qz);
  out.record("quaternion set/getRotationRadians", twin, q.x, q.y, q.z, q.w, qx, qy, qz);

  Q p, blend;
  p.setRotationRadians(z, x, y);
  const T t = between<T>(random, -0.2, 1.2);
  blend.slerp(t, q, p);
  out.record("quaternion slerp", twin, blend.x, blend.y, blend.z, blend.w);
  const Q nan(std::numeric_limits<T>::quiet_NaN(), T(0), T(0), T(1));
  blend.lerp(t, q, nan);  // the perpendicular blend (sines of t pi/2)
  out.record("quaternion lerp, perpendicular", twin, blend.x, blend.y, blend.z, blend.w);

  // The control: the C library's own functions, whose bits may change.
  const T s = between<T>(random, -1, 1);
  out.record(kControl, twin, std::sin(a), std::cos(a), std::tan(a), std::asin(s), std::acos(s), std::atan(x),
             std::atan2(x, y));
}

/// The float class's own turn between two directions (a half turn for
/// opposite ones).
void runFloatOnly(std::mt19937_64& random, Recorder& out) {
  const zeVec3f from = unitAxis<float>(random);
  const zeVec3f to = random() % 4 == 0 ? zeVec3f(-from.x, -from.y, -from.z) : unitAxis<float>(random);
  zeMatrix44f m;
  m.makeRotation(from, to);
  out.recordMatrix("makeRotation(from, to)", "f", m);
}

std::uint64_t hash(const std::vector<std::uint64_t>& bits) {
  std::uint64_t h = 1469598103934665603ULL;
  for (std::uint64_t b : bits)
    for (int i = 0; i < 8; ++i) h = (h ^ ((b >> (8 * i)) & 0xff)) * 1099511628211ULL;
  return h;
}

int write(const char* path, long count) {
  std::vector<Operation> ops;
  Recorder out(ops);
  std::mt19937_64 random(20240617);
  for (long i = 0; i < count; ++i) {
    run<float>(random, out);
    run<double>(random, out);
    runFloatOnly(random, out);
  }
  FILE* file = std::fopen(path, "wb");
  if (!file) {
    std::fprintf(stderr, "cannot write %s\n", path);
    return 2;
  }
  for (const Operation& op : ops) {
    std::fprintf(file, "%s\n%d %zu\n", op.name.c_str(), op.width, op.bits.size());
    std::fwrite(op.bits.data(), sizeof(std::uint64_t), op.bits.size(), file);
    std::printf("%-40s %8zu calls  %016llx\n", op.name.c_str(), op.bits.size() / static_cast<std::size_t>(op.width),
                static_cast<unsigned long long>(hash(op.bits)));
  }
  std::fclose(file);
  return 0;
}

std::vector<Operation> read(const char* path) {
  std::vector<Operation> ops;
  FILE* file = std::fopen(path, "rb");
  if (!file) return ops;
  char line[256];
  while (std::fgets(line, sizeof line, file)) {
    Operation op;
    op.name = std::string(line, std::strcspn(line, "\n"));
    std::size_t n = 0;
    if (std::fscanf(file, "%d %zu", &op.width, &n) != 2 || std::fgetc(file) != '\n' || op.width <= 0) break;
    op.bits.resize(n);
    if (std::fread(op.bits.data(), sizeof(std::uint64_t), n, file) != n) break;
    ops.push_back(std::move(op));
  }
  std::fclose(file);
  return ops;
}

int compare(const char* pathA, const char* pathB) {
  const std::vector<Operation> a = read(pathA), b = read(pathB);
  if (a.empty() || a.size() != b.size()) {
    std::printf("the files hold different operations (%zu and %zu)\n", a.size(), b.size());
    return 1;
  }
  long total = 0, control = -1;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].name != b[i].name || a[i].bits.size() != b[i].bits.size()) {
      std::printf("%s: the files differ in shape\n", a[i].name.c_str());
      return 1;
    }
    const std::size_t width = static_cast<std::size_t>(a[i].width);
    long differing = 0;
    for (std::size_t c = 0; c < a[i].bits.size(); c += width)
      if (std::memcmp(&a[i].bits[c], &b[i].bits[c], width * sizeof(std::uint64_t)) != 0) ++differing;
    std::printf("%-40s %8zu calls, %ld differ\n", a[i].name.c_str(), a[i].bits.size() / width, differing);
    if (a[i].name.compare(0, std::strlen(kControl), kControl) == 0) {
      control = (control < 0 ? 0 : control) + differing;
    } else {
      total += differing;
    }
  }
  std::printf("%ld calls of the library differ; %ld of the control\n", total, control);
  if (control == 0)
    std::printf("(the two runs' C library gave the same bits: on this machine the check shows nothing)\n");
  return total == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "write" && argc >= 3) {
    const long count = argc >= 5 && std::string(argv[3]) == "--count" ? std::atol(argv[4]) : 100000;
    return write(argv[2], count);
  }
  if (mode == "compare" && argc == 4) return compare(argv[2], argv[3]);
  std::fprintf(stderr, "usage: zeTrigBits write FILE [--count N] | zeTrigBits compare FILE FILE\n");
  return 2;
}
