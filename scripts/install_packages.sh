#!/usr/bin/env bash
# Installs those of the given Debian packages that are missing. Needs root or sudo for that; without
# either it names what is missing and ends with status 2. When nothing is missing it does nothing.
# usage: install_packages.sh PACKAGE...
set -euo pipefail

missing=()
for package in "$@"; do
  status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2> /dev/null || true)
  [[ $status == installed ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
  # Without a terminal nobody can type a password.
  if command -v sudo > /dev/null && { [[ -t 0 ]] || sudo -n true 2> /dev/null; }; then
    as_root=(sudo)
  else
    as_root=(false)
  fi
fi
if ! command -v apt-get > /dev/null || [[ ${as_root[*]} == false ]]; then
  printf 'These Debian packages are missing: %s\n' "${missing[*]}" >&2
  printf 'Install them and start again, or start again as a user who may:\n' >&2
  printf '  apt-get install --no-install-recommends %s\n' "${missing[*]}" >&2
  exit 2
fi

echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
