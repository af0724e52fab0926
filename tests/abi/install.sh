#!/usr/bin/env bash
# Installs into a temporary prefix, moves it elsewhere, and builds and runs a C program against it:
# once through find_package, once through pkg-config.
# usage: install.sh BUILD SOURCE CMAKE CC VERSION SONAME
set -euo pipefail

build=$1 source=$2 cmake=$3 cc=$4 version=$5 soname=$6
example=$source/examples/first_curve.c
expected=$source/examples/first_curve.expected

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/elsewhere

"$cmake" --install "$build" --prefix "$work/prefix" > /dev/null
mv "$work/prefix" "$prefix"
library=$(find "$prefix" -name "$soname")
libdir=$(dirname "$library")

echo '-- find_package'
"$cmake" -S "$source/tests/abi/consumer" -B "$work/consumer" -G Ninja -DCMAKE_C_COMPILER="$cc" \
  -DCMAKE_PREFIX_PATH="$prefix" -DKURVO_VERSION="$version" -DKURVO_EXAMPLE="$example" > /dev/null
"$cmake" --build "$work/consumer"
diff "$expected" <("$work/consumer/consumer")

echo '-- pkg-config'
export PKG_CONFIG_PATH=$libdir/pkgconfig
[[ $(pkg-config --modversion kurvo) == "$version" ]]
read -ra flags <<< "$(pkg-config --cflags --libs kurvo)"
"$cc" -std=c99 -pedantic -Wall -Wextra -Werror "$example" -o "$work/program" "${flags[@]}"
diff "$expected" <(LD_LIBRARY_PATH=$libdir "$work/program")

echo '-- what the library needs'
needed=$(readelf -dW "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
echo "$needed"
if grep -vE '^(libstdc\+\+|libc\+\+|libm|libgcc_s|libc|ld-linux.*)\.so' <<< "$needed"; then
  echo 'needs more than the standard library' >&2
  exit 1
fi

if [[ -x $prefix/bin/kurvo ]]; then
  echo '-- the client finds its library'
  "$prefix/bin/kurvo" --help > /dev/null
fi
