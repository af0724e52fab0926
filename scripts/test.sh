#!/usr/bin/env bash
# Builds everything with warnings as errors and assertions on, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

# The last five are what tests read glyphs and icons from and compare pictures with.
scripts/install_packages.sh g++ cmake ninja-build pkgconf libgtest-dev libcli11-dev libpugixml-dev \
  nlohmann-json3-dev libfmt-dev libutfcpp-dev libboost-dev zlib1g-dev \
  libfreetype-dev fonts-dejavu-core adwaita-icon-theme librsvg2-bin libpng-dev

cmake --workflow --preset dev
