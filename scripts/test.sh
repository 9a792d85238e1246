#!/usr/bin/env bash
# Builds the libraries and runs every test (installing what is missing).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
exec bash "$root/scripts/build-and-test.sh" "$root/build"
