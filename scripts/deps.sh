#!/usr/bin/env bash
# Installs, with apt-get, what building and testing the project need, when
# something is missing. With "bench" it also checks for Google Benchmark.
set -euo pipefail

need=()
command -v cmake >/dev/null 2>&1 || need+=(cmake)
command -v g++ >/dev/null 2>&1 || need+=(g++)
command -v make >/dev/null 2>&1 || need+=(make)
[ -f /usr/include/gtest/gtest.h ] || need+=(libgtest-dev)
if [ "${1:-}" = bench ]; then
  [ -f /usr/include/benchmark/benchmark.h ] || need+=(libbenchmark-dev)
fi

if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${need[@]}"
fi
