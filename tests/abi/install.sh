#!/usr/bin/env bash
# Installs into a temporary prefix, moves it elsewhere, and builds and runs a program in C and one in
# C++ against it: once through find_package, once through pkg-config. Looks at what each component brings.
# usage: install.sh BUILD SOURCE CMAKE GENERATOR CC CXX VERSION SONAME [LIBRARY], what it needs besides
set -euo pipefail

build=$1 source=$2 cmake=$3 generator=$4 cc=$5 cxx=$6 version=$7 soname=$8
besides=${9:-libc}
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
[[ ! -x $work/prefix/bin/kurvo ]] || client=(kurvo)
check runtime "$soname" "libkurvo.so.$version"
check development kurvo.h kurvo.hpp libkurvo.so kurvo.pc KurvoConfig.cmake KurvoConfigVersion.cmake \
  KurvoTargets.cmake KurvoTargets-TYPE.cmake
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
diff "$examples/first_curve.expected" <("$work/consumer/first_curve")
diff "$examples/curves.expected" <("$work/consumer/curves")

echo '-- pkg-config'
export PKG_CONFIG_PATH=$libdir/pkgconfig
[[ $(pkg-config --modversion kurvo) == "$version" ]]
read -ra flags <<< "$(pkg-config --cflags --libs kurvo)"
strict=(-pedantic -Wall -Wextra -Werror)
"$cc" -std=c99 "${strict[@]}" "$examples/first_curve.c" -o "$work/in_c" "${flags[@]}"
"$cxx" -std=c++20 "${strict[@]}" "$examples/curves.cpp" -o "$work/in_cxx" "${flags[@]}"
diff "$examples/first_curve.expected" <(LD_LIBRARY_PATH=$libdir "$work/in_c")
diff "$examples/curves.expected" <(LD_LIBRARY_PATH=$libdir "$work/in_cxx")

echo '-- what the library needs'
needed=$(readelf -dW "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
echo "$needed"
if grep -vE '^(libstdc\+\+|libc\+\+|libm|libgcc_s|libc|ld-linux.*|'"$besides"')\.so' <<< "$needed"; then
  echo 'needs more than the standard library' >&2
  exit 1
fi

if [[ -x $prefix/bin/kurvo ]]; then
  echo '-- the client finds its library'
  "$prefix/bin/kurvo" --help > /dev/null
fi
