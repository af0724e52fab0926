#!/usr/bin/env bash
# Runs the commands of a golden file and compares what they say with what stands in it.
# usage: golden.sh KURVO GOLDEN; with KURVO_WRITE_GOLDEN=1 the file is renewed and the change shown
#
# Commands follow "$ ", or "> " where they go on. All of a file run in one shell, in a directory of
# their own with the samples in it. "# needs FILE" skips them all, with status 77, where it is not. What a command says stands below it: standard output after two
# spaces ("\": it ends without a newline), standard error after "! ", the files it made, changed or
# removed after "~ ", a status other than 0 in brackets. Comments (#) and empty lines stay. Numbers
# with a fraction are rounded to seven digits: their last bits are the C library's.
export LC_ALL=C
here=$(realpath "$(dirname "$0")")
needed=$(sed -n 's/^# needs //p' "$2")
if [[ -n $needed && ! -e $needed ]]; then
  echo "Skipped: there is no $needed (Debian package fonts-dejavu-core)"
  exit 77
fi
program=$(realpath "$1")
golden=$(realpath "$2")
samples=$(realpath "$(dirname "$0")/../../samples")
log=$(mktemp -d)
trap 'rm -rf "$log"' EXIT
mkdir "$log/in" && cd "$log/in" && ln -s "$samples" samples || exit 1

kurvo() { "$program" "$@"; }

round_numbers() { awk -f "$here/round_numbers.awk"; }

list_files() { find . -maxdepth 1 -type f -exec cksum {} + | sort; }

run() {
  [[ -n $command ]] || return 0
  list_files > "$log/before"
  eval "$command" > "$log/out" 2> "$log/err" < /dev/null
  local status=$?
  round_numbers < "$log/out" | sed 's/^/  /'
  [[ -z $(tail -c 1 "$log/out") ]] || echo '\'
  sed "s|$PWD|.|g; s/^/! /" "$log/err"
  list_files | comm -3 "$log/before" - | sed 's/.* \.\//~ /' | sort -u
  [[ $status == 0 ]] || echo "[$status]"
  command=
}

command=
while IFS= read -r line; do
  case $line in
    '$ '*) run && command=${line:2} && echo "$line" ;;
    '> '*) command+=$'\n'${line:2} && echo "$line" ;;
    '#'* | '') run && echo "$line" ;;
  esac
done < "$golden" > "$log/said"
run >> "$log/said"

diff -u --label "$2" --label said "$golden" "$log/said" && exit
[[ ${KURVO_WRITE_GOLDEN-} == 1 ]] && cp "$log/said" "$golden" && exit
echo "To take this as right: KURVO_WRITE_GOLDEN=1 ctest -R golden" >&2
exit 1
