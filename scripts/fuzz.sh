#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds, each on one processor, and fails when one of them
# finds something. Inputs that were found lie in build/fuzz/findings, replayed by
#   build/fuzz/tests/fuzz/fuzz_TARGET FILE
# What is learnt about the way to new code is kept in build/fuzz/corpus; with --keep the corpus in
# tests/fuzz/corpus is made anew from it, small.
# usage: fuzz.sh [--keep] SECONDS [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

keep=0
if [[ ${1-} == --keep ]]; then keep=1; shift; fi
seconds=${1:?usage: fuzz.sh [--keep] SECONDS [TARGET...]}
shift
all=(roots evaluators intersection conversion extension offset region generation records outline svg)
targets=("${@:-${all[@]}}")
(($# > 0)) || targets=("${all[@]}")

cmake --preset fuzz > /dev/null
cmake --build --preset fuzz -j 2 -t "${targets[@]/#/fuzz_}" > /dev/null
mkdir -p build/fuzz/findings

export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1
fuzz() {
  local target=$1 program=build/fuzz/tests/fuzz/fuzz_$1 learnt=build/fuzz/corpus/$1
  local kept=tests/fuzz/corpus/$1 log=build/fuzz/findings/$1.log
  mkdir -p "$learnt" "$kept"
  local status=ok
  "$program" -max_total_time="$seconds" -max_len=600 -timeout=20 -rss_limit_mb=3000 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$target-" \
    "$learnt" "$kept" > "$log" 2>&1 || status=FOUND
  printf '%-14s %-6s %s runs, coverage %s, %s inputs\n' "$target" "$status" \
    "$(awk '/number_of_executed_units/ { print $2 }' "$log")" \
    "$(grep -oE 'cov: [0-9]+' "$log" | tail -1)" "$(ls "$learnt" | wc -l)"
  if ((keep)) && [[ $status == ok ]]; then
    rm -rf build/fuzz/small && mkdir -p build/fuzz/small
    "$program" -merge=1 -max_len=200 build/fuzz/small "$kept" "$learnt" > /dev/null 2>&1
    rm -f "$kept"/*
    # The inputs of the merge come smallest first; these reach most of the code.
    ls -Sr build/fuzz/small | head -"${KURVO_KEPT_INPUTS:-60}" |
      while read -r input; do cp "build/fuzz/small/$input" "$kept/"; done
  fi
  [[ $status == ok ]]
}

failed=0
for target in "${targets[@]}"; do fuzz "$target" || failed=1; done
if ((failed)); then echo 'see build/fuzz/findings' >&2; fi
exit "$failed"
