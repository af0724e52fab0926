#!/usr/bin/env bash
# Builds the comparison with other libraries and prints it: time and right answers of every question
# of every library, a process each.
# usage: scripts/compare.sh [--rows PATTERN] [LIBRARY...]
# The rows are those of `peer_kurvo --rows` that match the pattern of grep -E; of the libraries all
# are asked whose packages are there, unless some are named.
set -euo pipefail
cd "$(dirname "$0")/.."

rows=.
while [[ ${1-} == --* ]]; do
  case $1 in
    --rows) rows=$2; shift 2 ;;
    *) sed -n '2,6s/^# //p' "$0" >&2; exit 2 ;;
  esac
done

# A library that does not come back loses the cell.
readonly seconds=300

programs=build/bench/bench/peers
log=$({ cmake --preset bench && cmake --build --preset bench -j1 -t kurvo_peers; } 2>&1) ||
  { printf '%s\n' "$log" >&2; exit 1; }
libraries=${*:-$(cd "$programs" && find . -maxdepth 1 -type f -name 'peer_*' -printf '%f\n' | sed 's/^peer_//' | sort)}

printf '%-30s %6s  %-8s %10s %10s %10s %12s\n' row size library mean median p90 right
"$programs/peer_kurvo" --rows | grep -E "$rows" | while read -r row size; do
  for library in $libraries; do
    timeout "$seconds" "$programs/peer_$library" "$row" "$size" </dev/null ||
      printf '%s\t%s\t%s\t-\t-\t-\t-\t-\n' "$row" "$size" "$library"
  done
done | tee build/bench/comparison.tsv |
  awk -F'\t' '{ printf "%-30s %6s  %-8s %10s %10s %10s %6s/%s\n", $1, $2, $3, $4, $5, $6, $7, $8 }'
