#!/usr/bin/env bash
# The example that the README shows in a language is the one that is compiled and run.
# usage: readme.sh README EXAMPLE, of which the suffix is the language
set -euo pipefail

fence='```'${2##*.}
shown=$(awk -v fence="$fence" '$0 == fence { inside = 1; next } /^```$/ { if (inside) exit } inside' "$1")
diff -u --label README --label "$2" <(printf '%s\n' "$shown") "$2" || {
  echo "The first block of $1 that begins with $fence must be the text of $2" >&2
  exit 1
}
