#!/usr/bin/env bash
# Builds the client, draws every sample and some of their offsets; the pictures land in
# build/pictures/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh g++ cmake ninja-build libcli11-dev libpugixml-dev nlohmann-json3-dev \
  libfmt-dev libutfcpp-dev libboost-dev zlib1g-dev libfreetype-dev

cmake --preset release -DKURVO_BUILD_TESTS=OFF
cmake --build --preset release

mkdir -p build/pictures
for sample in samples/*.svg; do
  picture=build/pictures/${sample##*/}
  echo
  echo "== $sample"
  build/release/tools/kurvo draw "$sample" --picture "$picture"
done
draw_offset() {
  echo
  echo "== kurvo offset samples/$1.svg ${*:3}"
  build/release/tools/kurvo offset "samples/$1.svg" "${@:3}" --picture "build/pictures/$2.svg"
}
draw_offset bracket kerf --outside 3mm
draw_offset bodice seam --outside 10mm --join miter
draw_offset letters outlined --outside 12
draw_offset letters inlined --inside 12
echo
echo "The pictures, for any browser:"
printf '  %s\n' "$PWD"/build/pictures/*.svg
