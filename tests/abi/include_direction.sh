#!/usr/bin/env bash
# Floors of the library, lowest first: a file includes from its own floor or from one below it, by
# the path "floor/name.h", and headers never include each other in a circle. An exported function of
# a floor above is called through kurvo.h, and only where its gate and its error reports are wanted:
# each such call stands in the list below. The rooms of the client and of the second library keep
# the same order of includes; both libraries include nothing else but the public headers of C and
# the standard library's.
# usage: include_direction.sh SRC EXPORTS
#        include_direction.sh FOLDER HEADERS ROOM..., lowest first; HEADERS: a pattern of what else
#        may be included in <>
set -euo pipefail

floors=(foundation records calc control eval build query relate)
others='kurvo\.h|tbb/[a-z_]+\.h'  # the latter where long loops run on several threads
(($# < 3)) || { floors=("${@:3}"); others=$2; }
declare -A height
for i in "${!floors[@]}"; do height[${floors[i]}]=$i; done

# Calls that go up: file, function, and why it is that one. Any other is refused.
upward_calls='
build/arc_recognition.cpp  KurvocvPosition    a sample is refused where a query of it would be
build/convert.cpp          KurvocvIsLine      a curve is a line by the rule that callers ask for
build/convert.cpp          KurvocvStartPoint  leaves the end unwritten where there is none
build/convert.cpp          KurvocvEndPoint    the same
build/extend_composite.cpp KurvocvStartPoint  reports an end that has no point
build/extend_composite.cpp KurvocvEndPoint    the same
build/point_curve.cpp      KurvocvPosition    the origin for a curve that a query refuses
'

src=$1 exports=''
(($# > 2)) || exports=$(realpath "$2")
cd "$src"
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

  if [[ ${BASH_REMATCH[1]} == '<' ]]; then
    [[ $target =~ ^([a-z_]+|$others)$ ]] || complain "$file:$line: includes $target"
  elif [[ -z $theirs ]]; then
    [[ $target == kurvo.h ]] ||
      complain "$file:$line: write \"floor/name.h\" instead of \"$target\""
  elif [[ ! -f $target ]]; then
    complain "$file:$line: there is no $target"
  elif ((${own:-0} < theirs)); then
    complain "$file:$line: ${file%%/*} includes $target from a floor above it"
  elif [[ $file == *.h ]]; then
    edges+="$file $target"$'\n'
  fi
done < <(grep -rnE '^[[:space:]]*#[[:space:]]*include' --include='*.h' --include='*.cpp' .)

((seen > 0)) || complain "no #include found under $src"
circle=$(tsort <<< "$edges" 2>&1 > /dev/null) || complain "headers include each other: $circle"

[[ -n $exports ]] || exit "$failed"

# A name followed by "(" is defined where its line begins in the first column, and called where the
# line is indented.
declare -A home used
while IFS=: read -r file name; do
  file=${file#./}
  home[${name%(}]=$file
done < <(grep -rE '^[^[:space:]/#}]' --include='*.cpp' . | grep -v ';$' |
  sed -nE 's/^([^:]*):.*\b((Kurvo|GetEpsilon)[A-Za-z0-9_]*\().*/\1:\2/p')
while read -r name; do
  [[ -n ${home[$name]-} ]] || complain "$name is exported and defined nowhere"
done < "$exports"
while IFS=: read -r file line name; do
  file=${file#./}
  name=${name%(}
  theirs=${home[$name]-}
  [[ -n $theirs ]] && ((${height[${file%%/*}]} < ${height[${theirs%%/*}]})) || continue
  used[$file $name]=1
  grep -qE "^$file +$name " <<< "$upward_calls" ||
    complain "$file:$line: ${file%%/*} calls $name, which $theirs defines"
done < <(grep -rnoE '\b(Kurvo|GetEpsilon)[A-Za-z0-9_]*\(' --include='*.h' --include='*.cpp' .)
while read -r file name why; do
  [[ -z $file || -n ${used[$file $name]-} ]] || complain "$file does not call $name any more ($why)"
done <<< "$upward_calls"
exit "$failed"
