#!/usr/bin/env bash
# The long form of the tests that try to break the libraries: hostile records and failing memory under
# the address and undefined-behaviour sanitizers, threads under the thread sanitizer, small stacks,
# intersections of random curves against brute force, regions combined, grown, stroked and clipped
# against oracles.
# Hostile records are split among the processors. Prints what each function came to.
# docs/reliability.md keeps the figures.
# usage: reliability.sh [CALLS_OF_EACH_FUNCTION [FUNCTION...]]
set -euo pipefail
cd "$(dirname "$0")/.."

calls=${1:-1000000}
shift || true
functions=("${@:-*}")
step() { printf '\n=== %s (after %d s)\n' "$1" "$SECONDS"; }

build() {
  cmake --preset "$1" > /dev/null
  cmake --build --preset "$1" -j "$(nproc)" -t robust_test robust_outline_test > /dev/null
}
# run PRESET FILTER: the tests of that name for every function wanted, of both libraries.
run() {
  local filter='' program
  for function in "${functions[@]}"; do filter+="${filter:+:}$2$function"; done
  for program in robust_test robust_outline_test; do
    "build/$1/tests/robust/$program" --gtest_brief=1 --gtest_filter="$filter"
  done
}

# Uses of stack frames that are gone are looked for in every ctest; here that would take twice as
# long.
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1:detect_stack_use_after_return=0
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS=halt_on_error=1:allocator_may_return_null=1

build asan-long
step "Hostile records, $calls calls of each function"
parts=$(nproc)
running=()
for ((i = 0; i < parts; ++i)); do
  first=$((calls * i / parts))
  KURVO_FIRST_CALL=$first KURVO_CALLS=$((calls * (i + 1) / parts - first)) \
    run asan-long '*Hostile*/' > "build/asan-long/hostile.$i" &
  running+=($!)
done
failed=0
for i in "${!running[@]}"; do
  wait "${running[$i]}" || failed=1
  cat "build/asan-long/hostile.$i"
done
((failed == 0))
step 'Failing memory'
KURVO_MEMORY_CALLS=$((calls / 200 + 1)) run asan-long '*FailingMemory*/'

build tsan
step 'Threads'
functions=('')
KURVO_THREAD_CALLS=$((calls / 2000 + 16)) run tsan 'SharedCurves.*'

build release
step 'A stack of 256 KiB'
KURVO_STACK_CALLS=$((calls / 100 + 1)) run release 'SmallStack.*'
cmake --build --preset release -j "$(nproc)" -t relate_test > /dev/null
step "Intersections of $calls pairs of curves"
KURVO_PAIRS=$calls build/release/tests/relate/relate_test --gtest_brief=1 \
  --gtest_filter='IntersectPlanted.RandomPairs'

cmake --build --preset release -j "$(nproc)" -t outline_test outline_sweep_test > /dev/null
# outline TITLE ROUNDS FILTER
outline() {
  step "$1, $(($2 + 1)) rounds"
  KURVO_TEST_CASES=$(($2 + 1)) build/release/tests/outline/outline_test --gtest_brief=1 \
    --gtest_filter="$3"
}
# A thousand questions a round.
outline 'Letters of the fonts that are there combined, in nine families' $((calls / 1000)) 'RegionCombine.LettersOfFonts'
outline 'Random outlines combined' $((calls / 100)) 'RegionCombine.RandomOutlines'
outline 'Laws of combining, bit for bit' $((calls / 10)) 'RegionCombine.BitForBit'
outline 'Laws of combining pairs' $((calls / 1000)) 'RegionCombine.Commutes*:RegionCombine.ManyAtOnce'
step "The sweep without events, $((calls / 500 + 1)) rounds"
KURVO_TEST_CASES=$((calls / 500 + 1)) build/release/tests/outline/outline_sweep_test --gtest_brief=1
outline 'Regions grown and shrunk' $((calls / 60)) 'RegionOffset.*'
outline 'Strokes' $((calls / 500)) 'ChainStroke.*'
outline 'Chains clipped' $((calls / 50)) 'RegionClip.*'
