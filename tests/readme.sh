#!/usr/bin/env bash
# The examples that the README shows in a language are those that are compiled and run, all of them.
# usage: readme.sh README EXAMPLE..., of which the suffix is the language
set -euo pipefail

fence='```'${2##*.}
awk -v fence="$fence" '/^```$/ { inside = 0 } inside; $0 == fence { inside = 1 }' "$1" |
  diff -u --label README --label "${*:2}" - <(cat "${@:2}") || {
  echo "The blocks of $1 that begin with $fence must be, in this order, the text of ${*:2}" >&2
  exit 1
}
