#!/usr/bin/env bash
# Compares the symbols of the built library with the list of the interface and with the header, and
# looks for names without the interface's version, for calls that leave the library only to come
# back, and for tables of addresses that stay writable.
# usage: exports.sh LIBRARY LIST HEADER VERSION CC
set -euo pipefail
export LC_ALL=C

library=$1 list=$2 header=$3 version=$4 cc=$5
node=KURVO_${version%%.*}
failed=0

# reject TITLE NAMES: a failure when there is any name.
reject() {
  if [[ -n $2 ]]; then
    printf '%s:\n%s\n' "$1" "$2" >&2
    failed=1
  fi
}
# only_first A B: the names of A that are not in B.
only_first() { comm -23 <(printf '%s' "$1${1:+$'\n'}") <(printf '%s' "$2${2:+$'\n'}"); }

listed=$(< "$list")
# NAME@@NODE; the version itself is a symbol too.
versioned=$(nm -D --defined-only -P "$library" | awk '{ print $1 }' | grep -vx "$node" | sort -u)
exported=$(sed 's/@.*//' <<< "$versioned" | sort -u)
declared=$("$cc" -E -P -x c "$header" | grep -oE '\b(Kurvo|GetEpsilon)[A-Za-z0-9_]*[[:space:]]*\(' |
  tr -d ' (' | sort -u)
# Symbols that the dynamic linker looks up by name; those of our own were bound at link time.
looked_up=$(readelf -rW "$library" | awk '$3 ~ /^R_/ { sub(/@.*/, "", $5); print $5 }' | sort -u)

sort -uc "$list" || failed=1
reject "exported, but not in $list" "$(only_first "$exported" "$listed")"
reject "declared in $header, but not exported (not defined, or not in $list)" \
  "$(only_first "$declared" "$exported")"
reject "exported, but not declared in $header" "$(only_first "$exported" "$declared")"
reject "own names that are bound when the library is loaded, through the PLT or the GOT" \
  "$(comm -12 <(echo "$looked_up") <(echo "$exported"))"

reject "exported without the version $node" "$(grep -v "@@$node\$" <<< "$versioned")"
[[ $(readelf -lW "$library") == *GNU_RELRO* ]] || reject 'linked without' '-z relro'
[[ $(readelf -dW "$library") == *Flags:*NOW* ]] || reject 'linked without' '-z now'

missing=$(only_first "$listed" "$exported")
if [[ ${version%%.*} == 0 ]]; then
  printf 'still to come, of %d names:\n%s\n' "$(wc -l < "$list")" "${missing:-none}"
else
  reject "in $list, but not exported" "$missing"
fi

if ((failed)); then
  cat >&2 << END

The list is the interface: a name joins it on purpose, together with its declaration. After editing:
  LC_ALL=C sort -u -o '$list' '$list'
END
fi
exit "$failed"
