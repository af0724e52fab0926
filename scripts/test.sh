#!/usr/bin/env bash
# Builds everything with warnings as errors and assertions on, and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

# The five from libfreetype-dev on are what tests read glyphs and icons from and compare pictures with;
# DXF files are compared with what ezdxf reads of them, and read of librecad's parts.
scripts/install_packages.sh g++ cmake ninja-build pkgconf libgtest-dev libcli11-dev libpugixml-dev \
  nlohmann-json3-dev libfmt-dev libutfcpp-dev libboost-dev zlib1g-dev \
  libfreetype-dev fonts-dejavu-core adwaita-icon-theme librsvg2-bin libpng-dev \
  librecad-data \
  python3-dev python3-numpy pybind11-dev python3-pip python3-setuptools python3-wheel python3-venv \
  python3-pytest python3-hypothesis python3-dbg python3-mypy python3-distributed python3-fonttools \
  python3-ezdxf python3-shapely python3-matplotlib

cmake --workflow --preset dev
