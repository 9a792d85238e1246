// Measures the library's portable trigonometric functions against MPFR: for
// each function and precision, the awkward inputs of TrigReference.h and
// random ones up to the count asked for. Prints a markdown table of the
// largest error in ulps, where it occurs, and how often the result's bits
// differ from the C library's. Run through scripts/trig-accuracy.sh.
//
//   zeTrigAccuracy [--count N] [--threads T] [--seed S]

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "math/portable/zePortableTrig.h"
#include "trig/TrigReference.h"

using namespace trigref;

namespace {

struct Tally {
  long count = 0;
  long differing = 0;
  double worst = 0.0;
  Input worstInput = {0.0, 0.0};
  double worstSystem = 0.0;  // the C library's error at its own worst input
};

template <class T>
void measure(Function f, Input in, Reference& ref, Tally& tally) {
  const T y = narrow<T>(in.y), x = narrow<T>(in.x);
  const Input exact = {static_cast<double>(y), static_cast<double>(x)};
  const T mine = portable<T>(f, y, x);
  const T theirs = system<T>(f, y, x);
  const double e = ref.ulps(f, exact, mine);
  ++tally.count;
  if (!sameBits(mine, theirs)) {
    ++tally.differing;
    const double s = ref.ulps(f, exact, theirs);
    if (s > tally.worstSystem) tally.worstSystem = s;
  }
  if (e > tally.worst || tally.count == 1) {
    tally.worst = e;
    tally.worstInput = exact;
  }
}

float randomFloat(Function f, std::mt19937_64& random) {
  if (random() % 4 == 0) {
    const auto bits = static_cast<std::uint32_t>(random());
    float v;
    std::memcpy(&v, &bits, sizeof v);
    if (!std::isnan(v)) return v;
  }
  return narrow<float>(randomArgument(f, random));
}

template <class T>
Tally run(Function f, long count, int threads, unsigned seed) {
  std::vector<Input> hard;
  if (f == kAtan2) {
    hard = hardPairs();
  } else {
    for (double x : hardArguments(f, 20000)) hard.push_back({0.0, x});
  }
  std::vector<Tally> tallies(threads);
  std::vector<std::thread> workers;
  for (int t = 0; t < threads; ++t) {
    workers.emplace_back([&, t] {
      Reference ref;
      Tally& tally = tallies[t];
      for (std::size_t i = t; i < hard.size(); i += threads) measure<T>(f, hard[i], ref, tally);
      std::mt19937_64 random(seed * 1000003u + static_cast<unsigned>(f) * 101u + static_cast<unsigned>(t));
      const long randomCount = count > static_cast<long>(hard.size()) ? count - static_cast<long>(hard.size()) : 0;
      for (long i = t; i < randomCount; i += threads) {
        Input in;
        if (sizeof(T) == sizeof(float)) {
          in = {static_cast<double>(randomFloat(f, random)), static_cast<double>(randomFloat(f, random))};
        } else {
          in = {randomArgument(f, random), randomArgument(f, random)};
        }
        measure<T>(f, in, ref, tally);
      }
    });
  }
  for (auto& w : workers) w.join();
  Tally all;
  for (const Tally& t : tallies) {
    all.count += t.count;
    all.differing += t.differing;
    if (t.worstSystem > all.worstSystem) all.worstSystem = t.worstSystem;
    if (t.worst > all.worst || all.count == t.count) {
      all.worst = t.worst;
      all.worstInput = t.worstInput;
    }
  }
  return all;
}

void print(Function f, const char* precision, const Tally& t) {
  char where[96];
  if (f == kAtan2) {
    std::snprintf(where, sizeof where, "(%a, %a)", t.worstInput.y, t.worstInput.x);
  } else {
    std::snprintf(where, sizeof where, "%a", t.worstInput.x);
  }
  std::printf("| %s | %s | %ld | %.3f | `%s` | %.3f%% | %.3f |\n", functionName(f), precision, t.count, t.worst, where,
              100.0 * static_cast<double>(t.differing) / static_cast<double>(t.count), t.worstSystem);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  long count = 10000000;
  int threads = 1;
  unsigned seed = 1;
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string option = argv[i];
    if (option == "--count")
      count = std::atol(argv[i + 1]);
    else if (option == "--threads")
      threads = std::atoi(argv[i + 1]);
    else if (option == "--seed")
      seed = static_cast<unsigned>(std::atoi(argv[i + 1]));
  }
  if (threads < 1) threads = 1;
  std::printf(
      "| function | precision | inputs | max error (ulp) | at | differs from the C library | C library's max error "
      "where they differ (ulp) |\n");
  std::printf("|---|---|---|---|---|---|---|\n");
  for (int f = 0; f < kFunctionCount; ++f) {
    print(static_cast<Function>(f), "double", run<double>(static_cast<Function>(f), count, threads, seed));
    print(static_cast<Function>(f), "float", run<float>(static_cast<Function>(f), count, threads, seed));
  }
  return 0;
}
