#!/usr/bin/env bash
# docs.sh [output dir]: builds the API reference of the public headers with
# Doxygen (installing it when missing) into the output folder (build-docs by
# default). Any warning, an undocumented public name included, fails the run;
# so does a public member of a public class that the reference leaves out
# (scripts/check-reference.py compares the reference with the headers).
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
out=$(mkdir -p "${1:-$root/build-docs}" && cd "${1:-$root/build-docs}" && pwd)

bash "$root/scripts/deps.sh" docs
cd "$root"
ZEMATH_DOCS_OUT="$out" doxygen docs/Doxyfile
python3 "$root/scripts/check-reference.py" "$out/xml"
echo "API reference in $out/html/index.html"
