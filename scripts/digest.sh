#!/usr/bin/env bash
# Builds the tests with both compilers at every level of optimisation, and once with loops on several
# threads, and compares the digests of all results. Fails when two builds differ in a bit.
# usage: digest.sh [BUILD_DIRECTORY [JOBS]]
set -euo pipefail
cd "$(dirname "$0")/.."

work=${1:-build/digest} jobs=${2:-2}
failed=0
# build NAME CC CXX LEVEL PARALLEL
build() {
  local name=$1
  cmake -S . -B "$work/$name" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_C_COMPILER="$2" \
    -DCMAKE_CXX_COMPILER="$3" -DCMAKE_C_FLAGS="-$4" -DCMAKE_CXX_FLAGS="-$4" \
    -DKURVO_BUILD_TOOL=OFF -DKURVO_PARALLEL="$5" > /dev/null
  cmake --build "$work/$name" -j "$jobs" --target robust_test robust_outline_test > /dev/null
  for program in robust_test robust_outline_test; do
    "$work/$name/tests/robust/$program" --gtest_filter='Digest.*' || failed=1
  done > "$work/$name.txt"
  grep -E ' digest |^Kurvo|^Get' "$work/$name.txt" > "$work/$name.digests"
  printf '%-15s %s\n' "$name" "$(grep -hE '(exact|libm) digest' "$work/$name.txt" | paste -sd ' ')"
  cmp -s "$work/gcc-O0.digests" "$work/$name.digests" || {
    diff "$work/gcc-O0.digests" "$work/$name.digests" | grep '^[<>]' | sort -k2 || true
    failed=1
  }
}
for level in O0 O1 O2 O3; do build "gcc-$level" gcc g++ "$level" OFF; done
for level in O0 O1 O2 O3; do build "clang-$level" clang clang++ "$level" OFF; done
build gcc-O2-parallel gcc g++ O2 ON
if ((failed)); then echo 'builds differ, or differ from what is kept' >&2; fi
exit "$failed"
