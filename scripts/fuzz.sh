#!/usr/bin/env bash
# fuzz.sh [seconds] [build dir]: builds the libFuzzer targets with clang-14
# (address and undefined-behaviour sanitizers on) and runs each on its seed
# corpus for the given time (10 s by default). New inputs the fuzzer finds go
# to a scratch directory, never into the seed corpus; a crash stops the
# script with the input that caused it written to the build directory.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-10}
build=${2:-$root/build-fuzz}
jobs=$(nproc 2>/dev/null || echo 2)

bash "$root/scripts/deps.sh" fuzz
CC=clang-14 CXX=clang++-14 cmake -S "$root" -B "$build" -DZEMATH_FUZZ=ON -DZEMATH_WERROR=ON \
  -DZEMATH_BUILD_TESTS=OFF -DZEMATH_BUILD_TOOLS=OFF -DZEMATH_BUILD_BENCH=OFF
cmake --build "$build" -j "$jobs"

# Registered classes live for the whole run; leaks are checked by the
# normal and sanitizer test suites, where every test cleans up after itself.
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
for target in FuzzStringToArray FuzzFieldText FuzzPrintParse FuzzRecord; do
  echo "== fuzzing $target for ${seconds} s"
  scratch="$build/fuzz-corpus/$target"
  mkdir -p "$scratch"
  log="$build/$target.log"
  status=0
  "$build/tests/fuzz/$target" -max_total_time="$seconds" -max_len=4096 -print_final_stats=1 \
    -artifact_prefix="$build/$target-" "$scratch" "$root/tests/fuzz/corpus/$target" >"$log" 2>&1 || status=$?
  grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|SUMMARY)' "$log" || true
  if [ "$status" -ne 0 ]; then
    tail -n 40 "$log"
    echo "$target found a failure (see $log)"
    exit 1
  fi
done
