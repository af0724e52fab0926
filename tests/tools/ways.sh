#!/usr/bin/env bash
# The ways that the README shows are what a terminal shows: each command of its ```console blocks is
# run, one after the other, in a directory with the samples, and its output compared, and so are the
# pictures that they write to docs/ways. Status 77: the font of one of them is not there.
# usage: ways.sh KURVO ROOT; with KURVO_WRITE_GOLDEN=1 the pictures are renewed
set -u
export LC_ALL=C
here=$(realpath "$(dirname "$0")")
program=$(realpath "$1")
root=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
awk '/^```$/ { inside = 0 } inside; $0 == "```console" { inside = 1 }' "$root/README.md" > "$work/shown"
font=$(grep -o '/usr/share/fonts/[^ ]*' "$work/shown" | sort -u)
if [[ ! -e $font ]]; then
  echo "Skipped: there is no $font (Debian package fonts-dejavu-core)"
  exit 77
fi

mkdir -p "$work/in/docs/ways" && cd "$work/in" && ln -s "$root/samples" samples || exit 1
kurvo() { "$program" "$@"; }
while IFS= read -r line; do
  [[ $line == '$ '* ]] || continue
  echo "$line"
  eval "${line:2}" 2>&1 < /dev/null
done < "$work/shown" > "$work/said"

rounded() { awk -f "$here/round_numbers.awk" "$1"; }
failed=0
diff -u --label README --label said <(rounded "$work/shown") <(rounded "$work/said") || failed=1
if [[ ${KURVO_WRITE_GOLDEN-} == 1 ]]; then
  mkdir -p "$root/docs/ways" && cp docs/ways/* "$root/docs/ways"
fi
[[ $(ls docs/ways) == "$(ls "$root/docs/ways")" ]] || { echo "docs/ways has other pictures" && failed=1; }
for picture in docs/ways/*; do
  cmp <(rounded "$picture") <(rounded "$root/$picture") || { echo "$picture differs" && failed=1; }
done
shown=$(grep -o '](docs/ways/[^)]*' "$root/README.md" | sed 's/.*(//' | sort)
[[ $shown == "$(printf '%s\n' docs/ways/*)" ]] || { echo "README shows other pictures: $shown" && failed=1; }
exit "$failed"
