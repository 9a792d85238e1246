#!/usr/bin/env bash
# install-test.sh [build dir]: builds the libraries, installs them into a
# temporary prefix and builds the outside project of tests/consumer against
# that prefix the way users build: with g++ and clang++, -O2, for x86-64-v3
# and (where this processor has more) -march=native, through find_package and
# through pkg-config. Each build runs the consumer and compares every inline
# operation with the bits the library's own build records. Then, by hand
# without the package's flags: clang++ at -O0 and -O2 must still match (the
# headers' pragmas), and g++ must be reported by zeCheckExactResults().
# Last, the inline operations compiled for x86-64-v4 (AVX-512) with the
# package's flags must contain no fused multiply-add instruction, whatever
# this processor runs. The consumer programs run without LD_LIBRARY_PATH: the
# installed libraries find each other. Last, every example of docs/guide.md
# is built against the prefix and run.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-install}
jobs=$(nproc 2>/dev/null || echo 2)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
consumer=$root/tests/consumer

bash "$root/scripts/deps.sh" clang
# The test suite's configuration brings the recorder of the inline operations'
# bits; only the libraries and the recorder are built.
cmake -S "$root" -B "$build" -DZEMATH_WERROR=ON -DZEMATH_BUILD_TESTS=ON -DZEMATH_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j "$jobs" --target ZEMath LuxCore zeInlineReference
cmake --install "$build" --prefix "$prefix" >/dev/null
echo "installed into $prefix"
reference=$work/inline-reference.txt
"$build/tests/zeInlineReference" "$reference"

# The instruction-set macros a compiler predefines for an -march value.
isa_macros() { "$1" -march="$2" -dM -E -x c++ /dev/null | grep -E '^#define __[A-Z0-9_]+__ 1$' | sort; }
levels=()
if bash "$root/scripts/cpu-runs.sh" x86-64-v3; then
  levels+=(x86-64-v3)
  if [ "$(isa_macros g++ native)" != "$(isa_macros g++ x86-64-v3)" ]; then levels+=(native); fi
else
  levels+=(native)
fi
echo "levels this processor runs: ${levels[*]}"

# Runs a program; prints its last line, or everything when it fails.
run() {
  local out status=0
  out=$("$@" 2>&1) || status=$?
  if [ "$status" -eq 0 ]; then tail -n 1 <<<"$out"; else printf '%s\n' "$out"; fi
  return "$status"
}

export PKG_CONFIG_PATH="$prefix/lib/pkgconfig${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}"
for cxx in g++ clang++-14; do
  for route in find_package pkg-config; do
    options=(-DCMAKE_PREFIX_PATH="$prefix")
    [ "$route" = pkg-config ] && options=(-DZE_CONSUMER_USE_PKGCONFIG=ON)
    for level in "${levels[@]}"; do
      echo "== consumer: $cxx -O2 -march=$level through $route"
      dir=$work/consumer-$cxx-$route-$level
      cmake -S "$consumer" -B "$dir" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="-O2 -march=$level" \
        "${options[@]}" >/dev/null
      cmake --build "$dir" -j "$jobs" >/dev/null
      run "$dir/zeConsumer"
      run "$dir/zeInlineCheck" "$reference"
    done
  done
done

# By hand, without the package's flags, as a user who copies the include and
# library paths would.
by_hand() {
  "$@" -std=c++17 -I"$prefix/include" "$consumer/InlineCheck.cpp" -L"$prefix/lib" -lZEMath -lLuxCore \
    -Wl,-rpath,"$prefix/lib" -o "$work/by-hand"
}
level=${levels[0]}
for opt in -O0 -O2; do
  echo "== by hand: clang++-14 $opt -march=$level, no -ffp-contract (the headers' pragmas hold)"
  by_hand clang++-14 "$opt" -march="$level"
  run "$work/by-hand" "$reference"
done
if bash "$root/scripts/cpu-runs.sh" x86-64-v3; then
  echo "== by hand: g++ -O2 -march=x86-64-v3, no -ffp-contract (fused: the check must say so)"
  by_hand g++ -O2 -march=x86-64-v3
  run "$work/by-hand" "$reference" --expect-inexact
fi

# Wider than this processor may run: compiled for x86-64-v4 (AVX-512), the
# code must hold no fused multiply-add (the table's own code has none to give).
no_fused() {
  echo "== no fused multiply-add: $* -march=x86-64-v4"
  "$@" -march=x86-64-v4 -std=c++17 -I"$prefix/include" -c "$consumer/InlineCheck.cpp" -o "$work/v4.o"
  local fused
  fused=$(objdump -d --no-show-raw-insn "$work/v4.o" | grep -cE '\svfn?m(add|sub)' || true)
  echo "$fused fused instructions"
  [ "$fused" -eq 0 ]
}
# shellcheck disable=SC2046  # pkg-config's flags are meant to split
no_fused g++ -O2 $(pkg-config --cflags zemath)
# shellcheck disable=SC2046
no_fused g++ -O3 $(pkg-config --cflags zemath)
# shellcheck disable=SC2046
no_fused clang++-14 -O2 $(pkg-config --cflags zemath)
no_fused clang++-14 -O2

# The guide's examples, each built as printed against the prefix through
# find_package and run, their output compared with the guide's.
echo "== the guide's examples against the prefix"
python3 "$root/scripts/guide-examples.py" --prefix "$prefix" "$work/guide"
