#!/usr/bin/env bash
# Floors of the library, lowest first: a file includes from its own floor or from one below it, by
# the path "floor/name.h", and headers never include each other in a circle. A floor above is
# reached through kurvo.h.
# usage: include_direction.sh SRC
set -euo pipefail

floors=(foundation records calc eval build query relate)
declare -A height
for i in "${!floors[@]}"; do height[${floors[i]}]=$i; done

cd "$1"
failed=0
complain() {
  echo "$1" >&2
  failed=1
}

edges=''
seen=0
while IFS=: read -r file line text; do
  file=${file#./}
  seen=$((seen + 1))
  own=${height[${file%%/*}]-}
  [[ -n $own ]] || complain "$file: lies on no floor (${floors[*]})"
  [[ $text =~ include[[:space:]]*([\"<])([^\">]+) ]] || complain "$file:$line: cannot read: $text"
  target=${BASH_REMATCH[2]}
  theirs=${height[${target%%/*}]-}

  if [[ -z $theirs ]]; then
    [[ ${BASH_REMATCH[1]} == '<' || $target == kurvo.h ]] ||
      complain "$file:$line: write \"floor/name.h\" instead of \"$target\""
  elif [[ ! -f $target ]]; then
    complain "$file:$line: there is no $target"
  elif ((${own:-0} < theirs)); then
    complain "$file:$line: ${file%%/*} includes $target from a floor above it"
  elif [[ $file == *.h ]]; then
    edges+="$file $target"$'\n'
  fi
done < <(grep -rnE '^[[:space:]]*#[[:space:]]*include' --include='*.h' --include='*.cpp' .)

((seen > 0)) || complain "no #include found under $1"
circle=$(tsort <<< "$edges" 2>&1 > /dev/null) || complain "headers include each other: $circle"
exit "$failed"
