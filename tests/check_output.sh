#!/usr/bin/env bash
# Runs a program and compares what it prints with a file.
# usage: check_output.sh PROGRAM EXPECTED
set -euo pipefail

diff -u --label expected --label printed "$2" <("$1") || {
  echo "$1 does not print what $2 says" >&2
  exit 1
}
"$1" > /dev/null # and it ends with status 0
