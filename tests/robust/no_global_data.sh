#!/usr/bin/env bash
# Fails when the library has data that could change after it is loaded: any symbol in .data, .bss or
# thread-local storage, but for what the compiler's start-up code and its exception tables need.
# usage: no_global_data.sh LIBRARY
set -euo pipefail

start_up='__dso_handle|__TMC_END__|_edata|_end|__bss_start|completed\.0'
allowed="^($start_up|DW\.ref\.[A-Za-z0-9_]+)\$"
symbols=$(nm --defined-only "$1" | wc -l)
((symbols > 100)) || { echo "$1 is stripped: its symbols do not show" >&2; exit 1; }

# nm prints the letters b and d also for what is read-only once it has been relocated; objdump tells
# the sections apart.
found=$(objdump -t "$1" | awk 'NF > 3 && $(NF-2) ~ /^\.(data|bss|tdata|tbss)$/ { print $NF }' |
  grep -vE '^\.(data|bss)$' | grep -vE "$allowed" | sort -u || true)
if [[ -n $found ]]; then
  printf 'writable global data in %s:\n%s\n' "$1" "$found" >&2
  exit 1
fi
echo "none of $symbols symbols is writable data"
