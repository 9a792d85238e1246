#!/usr/bin/env bash
# trig-cpu-check.sh [build dir] [cmake options...]: builds the library with
# ZEMATH_PORTABLE_TRIG=ON (or as the options say) and zeTrigBits, runs every
# operation that takes a sine, cosine, tangent or an inverse of one on the
# same inputs twice, once as glibc picks its variants for this processor and
# once with its FMA and AVX2 variants switched off, and fails unless the two
# runs give the same bits. The C library's own results are compared as a
# control: they may differ, and show whether the switch changed anything.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-portable}
shift || true
options=("$@")
[ ${#options[@]} -gt 0 ] || options=(-DZEMATH_PORTABLE_TRIG=ON)
jobs=$(nproc 2>/dev/null || echo 2)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$build" -DZEMATH_WERROR=ON -DZEMATH_BUILD_TESTS=OFF -DZEMATH_BUILD_TOOLS=ON "${options[@]}" >/dev/null
cmake --build "$build" -j "$jobs" --target zeTrigBits
grep -qw fma /proc/cpuinfo || echo "note: this processor has no FMA; both runs use the same glibc variants"

echo "== as glibc chooses for this processor"
"$build/tools/zeTrigBits" write "$work/chosen.bin"
echo "== without glibc's FMA and AVX2 variants"
GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2_Usable,-FMA_Usable,-AVX2,-FMA "$build/tools/zeTrigBits" write "$work/baseline.bin"
echo "== compared"
"$build/tools/zeTrigBits" compare "$work/chosen.bin" "$work/baseline.bin"
