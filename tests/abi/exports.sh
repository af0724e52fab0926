#!/usr/bin/env bash
# Compares the symbols of a built library with the list of its interface and with its header, and
# looks for names without the interface's version, for calls that leave the library only to come
# back, for calls of the kernel that are not of its interface, and for tables of addresses that stay
# writable.
# usage: exports.sh LIBRARY LIST HEADER NODE VERSION CC [LIST_OF_THE_KERNEL]
set -euo pipefail
export LC_ALL=C

library=$1 list=$2 header=$3 version=$5 cc=$6 kernel=${7-/dev/null}
node=$4_${version%%.*}
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
# What the header says itself, not what it includes: markers name the file that lines come from.
declared=$("$cc" -E -I "$(dirname "$header")" -x c "$header" |
  awk -v own="\"$header\"" '/^# [0-9]+ / { inside = $3 == own; next } inside' | grep -oE '\b(Kurvo|GetEpsilon)[A-Za-z0-9_]*[[:space:]]*\(' |
  tr -d ' (' | sort -u)
# Symbols that the dynamic linker looks up by name; those of our own were bound at link time.
looked_up=$(readelf -rW "$library" | awk '$3 ~ /^R_/ { sub(/@.*/, "", $5); print $5 }' | sort -u)

sort -uc "$list" || failed=1
reject "exported, but not in $list" "$(only_first "$exported" "$listed")"
reject "declared in $header, but not in $list" "$(only_first "$declared" "$listed")"
reject "exported, but not declared in $header" "$(only_first "$exported" "$declared")"
called=$(nm -D --undefined-only -P "$library" | sed 's/[@ ].*//' |
  grep -E '^(Kurvo|GetEpsilon)' | sort -u || true)
reject "called, but not of the kernel's interface" "$(only_first "$called" "$(< "$kernel")")"
reject "own names that are bound when the library is loaded, through the PLT or the GOT" \
  "$(comm -12 <(echo "$looked_up") <(echo "$exported"))"

reject "exported without the version $node" "$(grep -v "@@$node\$" <<< "$versioned")"
[[ $(readelf -lW "$library") == *GNU_RELRO* ]] || reject 'linked without' '-z relro'
[[ $(readelf -dW "$library") == *Flags:*NOW* ]] || reject 'linked without' '-z now'

reject "in $list, but not exported" "$(only_first "$listed" "$exported")"

if ((failed)); then
  cat >&2 << END

The list is the interface: a name joins it on purpose, together with its declaration. After editing:
  LC_ALL=C sort -u -o '$list' '$list'
END
fi
exit "$failed"
