#!/usr/bin/env bash
# The C example that the README shows is the one that is compiled and run.
# usage: readme.sh README EXAMPLE
set -euo pipefail

diff -u --label README --label "$2" \
  <(awk '/^```c$/ { inside = 1; next } /^```$/ { if (inside) exit } inside' "$1") "$2" || {
  echo "The first C block of $1 must be the text of $2" >&2
  exit 1
}
