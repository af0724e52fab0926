#!/usr/bin/env bash
# Builds the comparison with other libraries and prints it: times in nanoseconds and right answers
# of every question of every library, a process each.
# usage: scripts/compare.sh [--rows PATTERN] [LIBRARY...]
#        scripts/compare.sh --write
# The rows are those of `peer_kurvo --rows` that match the pattern of grep -E; of the libraries all
# are asked whose packages are there (docs/comparison.md names these), unless some are named.
# --write asks everything three times and puts the medians into docs/comparison.md.
set -euo pipefail
cd "$(dirname "$0")/.."

rows=. write=false repeats=1
while [[ ${1-} == --* ]]; do
  case $1 in
    --rows) rows=$2; shift 2 ;;
    --write) write=true repeats=3; shift ;;
    *) sed -n '2,9s/^# //p' "$0" >&2; exit 2 ;;
  esac
done

# A library that does not come back loses the cell.
readonly seconds=300

results=build/bench/comparison.tsv
programs=build/bench/bench/peers
log=$({ cmake --preset bench && cmake --build --preset bench -j1 -t kurvo_peers; } 2>&1) ||
  { printf '%s\n' "$log" >&2; exit 1; }
libraries=${*:-$(cd "$programs" && find . -maxdepth 1 -type f -name 'peer_*' -printf '%f\n' |
  sed 's/^peer_//' | sort)}
load_before=$(cut -d' ' -f1 /proc/loadavg)

printf '%-28s %5s  %-6s %11s %11s %11s %11s %10s\n' \
  row size library mean median p90 worst right
for ((i = 0; i < repeats; ++i)); do
  "$programs/peer_kurvo" --rows | grep -E "$rows" | while read -r row size; do
    for library in $libraries; do
      timeout "$seconds" "$programs/peer_$library" "$row" "$size" < /dev/null ||
        printf '%s\t%s\t%s\t-\t-\t-\t-\t-\t-\n' "$row" "$size" "$library"
    done
  done
done | tee "$results" |
  awk -F'\t' '{ printf "%-28s %5s  %-6s %11s %11s %11s %11s %5s/%s\n", $1, $2, $3, $4, $5, $6, $7, $8, $9 }'

if $write; then
  scripts/comparison_table.py "$results" docs/comparison.md \
    "$load_before" "$(cut -d' ' -f1 /proc/loadavg)"
fi
