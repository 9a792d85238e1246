#!/usr/bin/env bash
# check-format.sh: fails when a C++ file of the tree differs from what
# clang-format makes of it under the repository's .clang-format. Changes
# nothing; `clang-format -i FILE` fixes a file it names.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
command -v clang-format >/dev/null 2>&1 || { echo "clang-format is missing (apt-get install clang-format)"; exit 1; }

# Sources under version control, and new ones not yet added.
mapfile -t files < <(git ls-files --cached --others --exclude-standard -- \
  '*.h' '*.hpp' '*.inl' '*.cpp' '*.cc' | grep -v '^build')
[ ${#files[@]} -gt 0 ] || { echo "no C++ files found"; exit 1; }
clang-format --dry-run --Werror "${files[@]}"
echo "${#files[@]} files follow .clang-format"
