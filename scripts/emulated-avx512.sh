#!/usr/bin/env bash
# emulated-avx512.sh [build dir]: builds the library with its AVX-512 unit
# emulated on AVX2 (SIMDe; a test-only build, see cmake/ZEMathIsa.cmake) and
# runs the suites that hold every vector path to the scalar loop, so the
# AVX-512 loops are checked byte for byte on processors without AVX-512 too.
# On a processor with AVX-512 the normal test run covers them natively.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-emulated}
jobs=$(nproc 2>/dev/null || echo 2)
# The suites that compare paths; a new family's path suite joins this list.
suites=(KernelPathsTest MorphPathsTest ArrayTransformPathsTest InstructionSetTest)

bash "$root/scripts/deps.sh" emulate
cmake -S "$root" -B "$build" -DZEMATH_EMULATE_AVX512=ON -DZEMATH_WERROR=ON -DZEMATH_BUILD_TOOLS=OFF
cmake --build "$build" -j "$jobs" --target "${suites[@]}"
for suite in "${suites[@]}"; do
  echo "== $suite (AVX-512 emulated)"
  "$build/tests/$suite" --gtest_brief=1
done
