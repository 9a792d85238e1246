#!/usr/bin/env bash
# Builds the libraries and runs the example program (installing what is missing).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build" -DZEMATH_WERROR=ON
cmake --build "$root/build" -j "$(nproc 2>/dev/null || echo 2)" --target zeTransformsExample
"$root/build/tools/zeTransformsExample"
