#!/usr/bin/env bash
# Installs into a temporary prefix, moves it elsewhere, and builds and runs a program in C and one in
# C++ against each of its libraries: once through find_package, once through pkg-config. Looks at what
# each component brings. The second library is linked once more, against the installed kernel alone.
# usage: install.sh BUILD SOURCE CMAKE GENERATOR CC CXX VERSION SONAME OUTLINE_VERSION OUTLINE_SONAME
#                   LIBRARY_BESIDES OUTLINE_OBJECT_OR_FLAG...
set -euo pipefail

build=$1 source=$2 cmake=$3 generator=$4 cc=$5 cxx=$6 version=$7 soname=$8
outline_version=$9 outline_soname=${10} besides=${11}
examples=$source/examples

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/elsewhere

# files PREFIX...: what lies under them, the build type left out.
files() {
  find "$@" ! -type d -printf '%f\n' | sed -E 's/(Targets)-.*/\1-TYPE.cmake/' | sort
}

"$cmake" --install "$build" --prefix "$work/prefix" > /dev/null

echo '-- components'
# check COMPONENT FILE...: it brings these files and no others.
check() {
  "$cmake" --install "$build" --prefix "$work/$1" --component "$1" > /dev/null
  mkdir -p "$work/$1"
  diff -u --label "expected of $1" --label installed \
    <(for file in "${@:2}"; do echo "$file"; done | sort) <(files "$work/$1")
}
client=()
[[ ! -x $work/prefix/bin/kurvo ]] || client=(_kurvo kurvo kurvo kurvo.1)
check runtime "$soname" "libkurvo.so.$version" "$outline_soname" "libkurvo_outline.so.$outline_version"
check development kurvo.h kurvo.hpp kurvo_outline.h kurvo_outline.hpp libkurvo.so libkurvo_outline.so kurvo.pc \
  kurvo-outline.pc KurvoConfig.cmake KurvoConfigVersion.cmake KurvoTargets.cmake \
  KurvoTargets-TYPE.cmake
check tools "${client[@]}"
diff -u <(files "$work/prefix") <(files "$work/runtime" "$work/development" "$work/tools")

mv "$work/prefix" "$prefix"
library=$(find "$prefix" -name "$soname")
libdir=$(dirname "$library")

echo '-- find_package'
"$cmake" -S "$source/tests/abi/consumer" -B "$work/consumer" -G "$generator" \
  -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" \
  -DKURVO_VERSION="$version" -DKURVO_EXAMPLES="$examples" > /dev/null
"$cmake" --build "$work/consumer"
for example in first_curve curves first_outline outlines; do
  diff "$examples/$example.expected" <("$work/consumer/$example")
done

echo '-- pkg-config'
export PKG_CONFIG_PATH=$libdir/pkgconfig
[[ $(pkg-config --modversion kurvo) == "$version" ]]
[[ $(pkg-config --modversion kurvo-outline) == "$outline_version" ]]
# try PACKAGE EXAMPLE COMPILER...: compiled so, the example prints what it should.
try() {
  local flags
  read -ra flags <<< "$(pkg-config --cflags --libs "$1")"
  "${@:3}" -pedantic -Wall -Wextra -Werror "$examples/$2" -o "$work/program" "${flags[@]}"
  diff "$examples/${2%.*}.expected" <(LD_LIBRARY_PATH=$libdir "$work/program")
}
try kurvo first_curve.c "$cc" -std=c99
try kurvo curves.cpp "$cxx" -std=c++20
try kurvo-outline first_outline.c "$cc" -std=c99
try kurvo-outline outlines.cpp "$cxx" -std=c++20

echo '-- what the libraries need'
outline=$libdir/$outline_soname
# needs LIBRARY OTHERS: it needs nothing but the standard library, and these others.
needs() {
  local needed
  needed=$(readelf -dW "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
  echo "$needed"
  if grep -vE "^((libstdc\+\+|libc\+\+|libm|libgcc_s|libc|ld-linux.*)\.so|$2)" <<< "$needed"; then
    echo "$1 needs more than it may" >&2
    exit 1
  fi
}
needs "$library" "$besides\."
needs "$outline" "$soname\$"
"$cxx" -shared -Wl,-z,defs -o "$work/again.so" "${@:12}" -L "$libdir" -lkurvo
found=$(env -u LD_LIBRARY_PATH ldd "$outline")
[[ $found == *"$soname => $libdir/"* ]] || {
  printf 'does not find the kernel beside it:\n%s\n' "$found" >&2
  exit 1
}

if [[ -x $prefix/bin/kurvo ]]; then
  echo '-- the client finds its library'
  "$prefix/bin/kurvo" --help > /dev/null
fi
