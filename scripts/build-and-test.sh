#!/usr/bin/env bash
# build-and-test.sh <build dir> [cmake options...]: configures the project in
# the build directory with warnings as errors, builds everything and runs
# every test through CTest.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=$1
shift
jobs=$(nproc 2>/dev/null || echo 2)

bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$build" -DZEMATH_WERROR=ON -DZEMATH_BUILD_TESTS=ON "$@"
cmake --build "$build" -j "$jobs"
ctest --test-dir "$build" --output-on-failure -j "$jobs"
