#!/usr/bin/env bash
# The first steps that the header shows compile as C99 and as C++20.
# usage: header_sample.sh HEADER C-COMPILER C++-COMPILER
set -euo pipefail

sample=$(awk '/^ \* First steps/ { inside = 1; next } /^ \*$/ { if (inside) exit }
              inside { print substr($0, 6) }' "$1")
[[ $sample == *KurvocvPosition* ]] || {
  echo "No first steps in $1" >&2
  exit 1
}
program=$(printf '#include "kurvo.h"\nint main(void) {\n%s\nreturn 0;\n}\n' "$sample")
flags=(-pedantic -Wall -Wextra -Wconversion -Werror -fsyntax-only -I "$(dirname "$1")")
"$2" -std=c99 "${flags[@]}" -x c - <<< "$program"
"$3" -std=c++20 "${flags[@]}" -x c++ - <<< "$program"
