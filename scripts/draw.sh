#!/usr/bin/env bash
# Builds the client and draws every sample; the pictures land in build/pictures/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install_packages.sh g++ cmake ninja-build libcli11-dev libpugixml-dev nlohmann-json3-dev \
  libfmt-dev libutfcpp-dev libboost-dev zlib1g-dev

cmake --preset release -DKURVO_BUILD_TESTS=OFF
cmake --build --preset release

mkdir -p build/pictures
for sample in samples/*.svg; do
  picture=build/pictures/${sample##*/}
  echo
  echo "== $sample"
  build/release/tools/kurvo draw "$sample" --picture "$picture"
done
echo
echo "The pictures, for any browser:"
printf '  %s\n' "$PWD"/build/pictures/*.svg
