#!/usr/bin/env bash
# Builds the benchmark programs in build-bench (optimised, no tests) and runs
# them. Arguments go to every program; without any, each runs ten repetitions
# and prints the median of each benchmark and the ratio they call for.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bash "$root/scripts/deps.sh" bench
cmake -S "$root" -B "$root/build-bench" -DCMAKE_BUILD_TYPE=Release \
  -DZEMATH_BUILD_BENCH=ON -DZEMATH_BUILD_TESTS=OFF -DZEMATH_BUILD_TOOLS=OFF
cmake --build "$root/build-bench" -j"$(nproc)"
[ $# -gt 0 ] || set -- --benchmark_repetitions=10 --benchmark_report_aggregates_only=true
"$root/build-bench/bench/VolumeDispatchBench" "$@"
