#!/usr/bin/env bash
# Installs the libraries and, by pip, the package into a virtual environment of its own, and runs
# its tests there. Nothing is fetched: what it stands on is the interpreter's.
# usage: install.sh PYTHON BUILD_DIR SOURCE_DIR
set -euo pipefail
python=$1 build=$2 source=$3
unset PYTHONPATH  # or another build would be tested

# In this order: setuptools brings its own distutils, which pip would load from elsewhere.
if ! "$python" -c 'import setuptools, wheel, pip, pytest' 2> /dev/null; then
  echo 'Needed: Debian packages python3-pip, python3-setuptools, python3-wheel, python3-venv,' \
    'python3-pytest'
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for component in runtime development; do
  cmake --install "$build" --prefix "$work/prefix" --component $component > /dev/null
done
cp -r "$source" "$work/source"  # pip builds in the folder itself
"$python" -m venv --without-pip --system-site-packages "$work/env"
# Not optimised: what is tested compiles in half the time.
VIRTUAL_ENV=$work/env CMAKE_BUILD_TYPE=None CMAKE_BUILD_PARALLEL_LEVEL=2 CMAKE_PREFIX_PATH=$work/prefix:${CMAKE_PREFIX_PATH-} \
  "$python" -m pip --python "$work/env/bin/python" install --quiet --no-index --no-deps \
  --no-build-isolation --disable-pip-version-check "$work/source"
cd "$work"
"$work/env/bin/python" -c 'import kurvo, sys; assert kurvo.__file__.startswith(sys.prefix)'
"$work/env/bin/python" -B -m pytest -q -p no:cacheprovider source/tests
