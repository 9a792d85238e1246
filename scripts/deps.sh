#!/usr/bin/env bash
# Installs, with apt-get, what building and testing the project need, when
# something is missing. With "bench" it also checks for Google Benchmark, GLM,
# Eigen, gnuplot and python3;
# with "docs", for Doxygen, clang-14 and python3; with "emulate", for SIMDe; with "clang", for clang++-14.
set -euo pipefail

need=()
command -v cmake >/dev/null 2>&1 || need+=(cmake)
command -v g++ >/dev/null 2>&1 || need+=(g++)
command -v make >/dev/null 2>&1 || need+=(make)
[ -f /usr/include/gtest/gtest.h ] || need+=(libgtest-dev)
# The demo parses its options with CLI11, writes its pictures with libpng and
# reads animated characters with Assimp; Debian's test models are the
# characters its test and the model benchmark play.
[ -f /usr/include/CLI/CLI.hpp ] || need+=(libcli11-dev)
[ -f /usr/include/png.h ] || need+=(libpng-dev)
[ -f /usr/include/assimp/scene.h ] || need+=(libassimp-dev)
[ -d /usr/share/assimp/models ] || need+=(assimp-testmodels)
command -v pkg-config >/dev/null 2>&1 || need+=(pkg-config)
# MPFR is the exact reference of the trigonometric tests and measurements.
[ -f /usr/include/mpfr.h ] || need+=(libmpfr-dev)
# The guide's examples are extracted, built and run by a python3 script.
command -v python3 >/dev/null 2>&1 || need+=(python3)
if [ "${1:-}" = docs ]; then
  command -v doxygen >/dev/null 2>&1 || need+=(doxygen)
  # The reference's completeness check reads the headers' syntax tree.
  command -v clang++-14 >/dev/null 2>&1 || need+=(clang-14)
  command -v python3 >/dev/null 2>&1 || need+=(python3)
fi
if [ "${1:-}" = bench ]; then
  [ -f /usr/include/benchmark/benchmark.h ] || need+=(libbenchmark-dev)
  [ -f /usr/include/glm/glm.hpp ] || need+=(libglm-dev)
  [ -f /usr/include/eigen3/Eigen/Dense ] || need+=(libeigen3-dev)
  command -v gnuplot >/dev/null 2>&1 || need+=(gnuplot-nox)
  command -v python3 >/dev/null 2>&1 || need+=(python3)
fi
if [ "${1:-}" = fuzz ]; then
  command -v clang++-14 >/dev/null 2>&1 || need+=(clang-14)
  ls /usr/lib/llvm-14/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a >/dev/null 2>&1 || need+=(libclang-rt-14-dev)
fi
if [ "${1:-}" = emulate ]; then
  [ -f /usr/include/simde/x86/avx512.h ] || need+=(libsimde-dev)
fi
if [ "${1:-}" = clang ]; then
  command -v clang++-14 >/dev/null 2>&1 || need+=(clang-14)
fi
if [ "${1:-}" = valgrind ]; then
  command -v valgrind >/dev/null 2>&1 || need+=(valgrind)
fi

if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${need[@]}"
fi
