#!/usr/bin/env bash
# install-test.sh [build dir]: builds the libraries, installs them into a
# temporary prefix and builds and runs the outside programs of tests/consumer
# against that prefix twice: through find_package and through pkg-config.
# They run without LD_LIBRARY_PATH: the installed libraries find each other.
# Then every example of docs/guide.md is built against the prefix and run.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-install}
jobs=$(nproc 2>/dev/null || echo 2)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

bash "$root/scripts/deps.sh"
cmake -S "$root" -B "$build" -DZEMATH_WERROR=ON -DZEMATH_BUILD_TESTS=OFF -DZEMATH_BUILD_TOOLS=OFF
cmake --build "$build" -j "$jobs"
cmake --install "$build" --prefix "$prefix" >/dev/null
echo "installed into $prefix"

echo "== consumer through find_package"
cmake -S "$root/tests/consumer" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/zeConsumer"
env -u LD_LIBRARY_PATH "$work/cmake/zeMathOnly"

echo "== consumer through pkg-config"
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}"
cmake -S "$root/tests/consumer" -B "$work/pkgconfig" -DZE_CONSUMER_USE_PKGCONFIG=ON >/dev/null
cmake --build "$work/pkgconfig" >/dev/null
"$work/pkgconfig/zeConsumer"
env -u LD_LIBRARY_PATH "$work/pkgconfig/zeMathOnly"

# The guide's examples, each built as printed against the prefix through
# find_package and run, their output compared with the guide's.
echo "== the guide's examples against the prefix"
python3 "$root/scripts/guide-examples.py" --prefix "$prefix" "$work/guide"
