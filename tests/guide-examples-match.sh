#!/usr/bin/env bash
# guide-examples-match.sh <examples.cpp> <guide.md>: every block of the test
# file between "// example: NAME" and "// end" (indentation removed) must
# equal the code block that follows "<!-- example: NAME -->" in the guide,
# and every such block of the guide must have its twin in the test file.
set -euo pipefail
examples=$1
guide=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# From the test file: one file per example, indentation removed.
awk -v dir="$work/test" '
  function flush(   i, line) {
    for (i = 1; i <= n; ++i) { line = lines[i]; print (length(line) ? substr(line, cut + 1) : "") > (dir "." name) }
    close(dir "." name)
  }
  /^[ \t]*\/\/ example: / { name = $3; n = 0; cut = 1000; next }
  name != "" && /^[ \t]*\/\/ end$/ { flush(); name = ""; next }
  name != "" {
    lines[++n] = $0
    if (length($0)) { match($0, /^ */); if (RLENGTH < cut) cut = RLENGTH }
  }' "$examples"

# From the guide: the fenced block after each marker.
awk -v dir="$work/guide" '
  /^<!-- example: .* -->$/ { name = $3; state = 1; next }
  state == 1 && /^```/ { state = 2; next }
  state == 2 && /^```$/ { close(dir "." name); state = 0; name = ""; next }
  state == 2 { print > (dir "." name) }' "$guide"

status=0
for f in "$work"/test.*; do
  name=${f##*/test.}
  if [ ! -f "$work/guide.$name" ]; then
    echo "the guide lacks example $name"; status=1
  elif ! diff -u "$work/guide.$name" "$f"; then
    echo "example $name differs between the guide and the test file"; status=1
  fi
done
for f in "$work"/guide.*; do
  name=${f##*/guide.}
  [ -f "$work/test.$name" ] || { echo "the guide's example $name is not in the test file"; status=1; }
done
[ "$status" -ne 0 ] || echo "$(ls "$work"/test.* | wc -l) examples match"
exit "$status"
