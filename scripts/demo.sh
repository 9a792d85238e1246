#!/usr/bin/env bash
# Builds the libraries and runs the demo on its built-in scene (installing
# what is missing), then on an animated character when Debian's
# assimp-testmodels is there. Arguments go to the first run, e.g.
# --image scene.png; arguments naming a model (--model PATH ...) replace both
# runs by that one.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build" -DZEMATH_WERROR=ON
cmake --build "$root/build" -j "$(nproc 2>/dev/null || echo 2)" --target zeDemo zeTransformsExample
"$root/build/tools/zeDemo" "$@"
case " $* " in *" --model"*) exit 0 ;; esac
character=/usr/share/assimp/models/X/BCN_Epileptic.X
if [ -f "$character" ]; then
  echo
  echo "=== the demo on an animated character"
  "$root/build/tools/zeDemo" --model "$character" --frames 120
fi
