#!/usr/bin/env bash
# Fails when clang-format 14 would change a source file. To format: scripts/check_format.sh --fix
set -euo pipefail
cd "$(dirname "$0")/.."

for formatter in clang-format-14 clang-format none; do
  if [[ $("$formatter" --version 2> /dev/null) == *' version 14.'* ]]; then break; fi
done
if [[ $formatter == none ]]; then
  echo 'clang-format 14 is needed: other versions format differently' >&2
  exit 2
fi

mode=(--dry-run -Werror)
[[ ${1-} == --fix ]] && mode=(-i)
git -c safe.directory="$PWD" ls-files -z --cached --others --exclude-standard -- \
  '*.h' '*.hpp' '*.c' '*.cpp' |
  xargs -0 --no-run-if-empty "$formatter" "${mode[@]}"
