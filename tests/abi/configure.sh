#!/usr/bin/env bash
# Configures as on machines where packages are missing, and looks at what is left out, what is said
# about it, and what stops.
# usage: configure.sh SOURCE CMAKE GENERATOR CC CXX
set -euo pipefail

source=$1 cmake=$2
compilers=(-G "$3" "-DCMAKE_C_COMPILER=$4" "-DCMAKE_CXX_COMPILER=$5")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
packages=(TBB CLI11 pugixml nlohmann_json fmt utf8cpp Boost GTest Freetype DejaVu PNG benchmark
          KurvoPython)
parts=(TOOL=AUTO TESTS=AUTO BENCH=OFF)  # unless a case asks otherwise

# configure HIDDEN PART=VALUE...: prints what CMake says; every package and part is set anew.
configure() {
  local package hide arguments=()
  for package in "${packages[@]}"; do
    hide=OFF
    if [[ " $1 " == *" $package "* ]]; then hide=ON; fi
    arguments+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=$hide")
  done
  "$cmake" -S "$source" -B "$work/build" "${compilers[@]}" "${arguments[@]}" \
    "${parts[@]/#/-DKURVO_BUILD_}" "${@:2}" 2>&1 | tr -s ' \n' ' '
}

failed=0
# expect TITLE TEXT PATTERN: the text has the pattern; with ! before it, has not.
expect() {
  if [[ ${3:0:1} == ! ]]; then [[ ! $2 =~ ${3:1} ]] && return; else [[ $2 =~ $3 ]] && return; fi
  printf '%s: expected %s in\n%s\n\n' "$1" "$3" "$2" >&2
  failed=1
}
# builds TITLE HIDDEN TARGETS SAID...: it configures, has these of the targets and says this.
builds() {
  local said targets pattern bench=OFF
  if [[ $2 == *benchmark* ]]; then bench=AUTO; fi  # the tests do not ask for that package
  said=$(configure "$2" "-DKURVO_BUILD_BENCH=$bench") || expect "$1" "$said" 'no error'
  targets=$("$cmake" --build "$work/build" -t help | tr -c '[:alnum:]_\n' ' ' |
    grep -owE 'kurvo|kurvo_tool|records_test|kurvo_bench' | sort -u | xargs)
  expect "$1" "$targets" "^$3\$"
  for pattern in "${@:4}"; do expect "$1" "$said" "$pattern"; done
}
# stops TITLE HIDDEN PART SAID: asked for by name, the part that cannot be built is an error.
stops() {
  local said
  said=$(configure "$2" "-DKURVO_BUILD_$3=ON") && expect "$1" "$said" 'an error'
  expect "$1" "$said" "KURVO_BUILD_$3 is ON, but .* for want of .*$4"
}

builds 'nothing but a compiler' "${packages[*]}" 'kurvo' \
  'Left out: the client, for want of CLI11 .*libcli11-dev.*libpugixml-dev.*nlohmann-json3-dev.*libfmt-dev.*libutfcpp-dev' \
  'Left out: the tests.*libgtest-dev.*libfreetype-dev.*fonts-dejavu-core' \
  'Left out: the benchmarks.*libbenchmark-dev' \
  'Left out: the Python package.*python3-numpy, pybind11-dev'
builds 'no fonts' Freetype 'kurvo kurvo_tool' \
  'Left out: fonts in the client, for want of Freetype .*libfreetype-dev' '!Left out: the client'
builds 'no picture library' PNG 'kurvo kurvo_tool' 'Left out: the tests.*libpng-dev' '!the client'
builds 'no client' 'fmt PNG' 'kurvo records_test' 'the client.*libfmt-dev' \
  '!the tests' '!libcli11-dev'
expect 'threads asked for where they are' "$(configure TBB -DKURVO_PARALLEL=AUTO)" \
  'Left out: long loops on several threads, for want of TBB .*libtbb-dev'
expect 'no threads unless asked for' "$(configure TBB -UKURVO_PARALLEL)" '!TBB'
stops 'client asked for' CLI11 TOOL libcli11-dev
stops 'tests asked for' GTest TESTS libgtest-dev
stops 'benchmarks asked for' benchmark BENCH libbenchmark-dev

# Inside another project there is the library alone, and nothing to say.
mkdir "$work/outer"
cat > "$work/outer/CMakeLists.txt" << END
cmake_minimum_required(VERSION 3.25)
project(Outer LANGUAGES C CXX)
add_subdirectory($source kurvo)
END
said=$("$cmake" -S "$work/outer" -B "$work/outer/build" "${compilers[@]}" 2>&1)
expect 'inside another project' "$said" '!Left out'

exit "$failed"
