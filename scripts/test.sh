#!/usr/bin/env bash
# Builds everything with warnings as errors and assertions on, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

# The last three are what the client's tests read icons from and compare pictures with.
scripts/install_packages.sh g++ cmake ninja-build pkgconf libgtest-dev libpugixml-dev libcli11-dev \
  adwaita-icon-theme librsvg2-bin libpng-dev

cmake --workflow --preset dev
