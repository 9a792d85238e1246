#!/usr/bin/env bash
# Builds the benchmark programs in build-bench (optimised, no tests) and runs
# them. With arguments, they go to every program and the output stays on the
# console. Without any, each program runs five repetitions and the medians,
# the target ratios, the machine and a plot go to bench/RESULTS.md.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${ZEMATH_BENCH_BUILD:-$root/build-bench}"
bash "$root/scripts/deps.sh" bench
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release \
  -DZEMATH_BUILD_BENCH=ON -DZEMATH_BUILD_TESTS=OFF -DZEMATH_BUILD_TOOLS=OFF
cmake --build "$build" -j"$(nproc)"
programs=(VolumeDispatchBench SkinningBench FrameWorkBench TransformBench TransformOpsBench ModelSkinningBench TrigBench)
# A program whose dependencies are missing is not built (cmake says which).
built=()
for p in "${programs[@]}"; do
  if [ -x "$build/bench/$p" ]; then built+=("$p"); else echo "$p was not built: skipped"; fi
done
programs=("${built[@]}")
# Built for x86-64-v3, as a user's program would be: run where the processor has it.
if bash "$root/scripts/cpu-runs.sh" x86-64-v3; then programs+=(InlineOpsBench); fi
if [ $# -gt 0 ]; then
  for p in "${programs[@]}"; do "$build/bench/$p" "$@"; done
  exit 0
fi
out="$(mktemp -d)"
args=(--benchmark_repetitions=5 --benchmark_report_aggregates_only=true --benchmark_min_time=0.1)
for p in "${programs[@]}"; do
  "$build/bench/$p" "${args[@]}" --benchmark_out="$out/$p.json" --benchmark_out_format=json
done
python3 "$root/scripts/bench_report.py" "$root/bench/RESULTS.md" "scripts/bench.sh (${args[*]})" \
  "$root/bench/skinning.png" "$out"/*.json
rm -rf "$out"
echo "Wrote $root/bench/RESULTS.md"
