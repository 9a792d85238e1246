#!/usr/bin/env bash
# Builds the libraries and runs the demo on its built-in scene (installing
# what is missing). Arguments go to the demo, e.g. --image scene.png.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build" -DZEMATH_WERROR=ON
cmake --build "$root/build" -j "$(nproc 2>/dev/null || echo 2)" --target zeDemo zeTransformsExample
"$root/build/tools/zeDemo" "$@"
