#!/usr/bin/env bash
# trig-accuracy.sh [inputs per function] [build dir]: builds the library and
# zeTrigAccuracy (tools/trig/) and measures the library's own sin, cos, tan,
# asin, acos, atan and atan2, float and double, against MPFR: the awkward
# inputs (multiples of pi/2, huge arguments, subnormals, zeros, infinities,
# NaN, the branch points) and random ones up to the count (10,000,000 by
# default). Prints a markdown table: the largest error in ulps and where, and
# how often the result differs from the C library's.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
count=${1:-10000000}
build=${2:-$root/build-accuracy}
jobs=$(nproc 2>/dev/null || echo 2)

bash "$root/scripts/deps.sh" >&2
cmake -S "$root" -B "$build" -DZEMATH_WERROR=ON -DZEMATH_BUILD_TESTS=OFF >&2
cmake --build "$build" -j "$jobs" --target zeTrigAccuracy >&2
echo "Machine: $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2- | sed 's/^ *//'), $(ldd --version | head -1)"
echo "Command: \`scripts/trig-accuracy.sh $count\`"
echo
"$build/tools/zeTrigAccuracy" --count "$count" --threads "$jobs"
