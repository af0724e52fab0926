#!/usr/bin/env bash
# Builds the tests with both compilers at every level of optimisation and compares the digests of
# all results. Fails when two builds differ in a bit.
# usage: digest.sh [BUILD_DIRECTORY [JOBS]]
set -euo pipefail
cd "$(dirname "$0")/.."

work=${1:-build/digest} jobs=${2:-2}
failed=0
for compiler in 'gcc g++' 'clang clang++'; do
  read -r cc cxx <<< "$compiler"
  for level in O0 O1 O2 O3; do
    name=$cc-$level
    cmake -S . -B "$work/$name" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_C_COMPILER="$cc" \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_C_FLAGS="-$level" -DCMAKE_CXX_FLAGS="-$level" \
      -DKURVO_BUILD_TOOL=OFF > /dev/null
    cmake --build "$work/$name" -j "$jobs" --target robust_test robust_outline_test > /dev/null
    for program in robust_test robust_outline_test; do
      "$work/$name/tests/robust/$program" --gtest_filter='Digest.*' || failed=1
    done > "$work/$name.txt"
    grep -E ' digest |^Kurvo|^Get' "$work/$name.txt" > "$work/$name.digests"
    printf '%-10s %s\n' "$name" "$(grep -hE '(exact|libm) digest' "$work/$name.txt" | paste -sd ' ')"
    cmp -s "$work/gcc-O0.digests" "$work/$name.digests" || {
      diff "$work/gcc-O0.digests" "$work/$name.digests" | grep '^[<>]' | sort -k2 || true
      failed=1
    }
  done
done
if ((failed)); then echo 'builds differ, or differ from what is kept' >&2; fi
exit "$failed"
