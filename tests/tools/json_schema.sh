#!/usr/bin/env bash
# What the client writes as JSON, what it reads in the tests and what docs/json.md shows keeps to the
# schema, and what breaks a rule does not. Status 77: nothing here that validates.
# usage: json_schema.sh KURVO DOCS SAMPLES DATA
set -euo pipefail
python3 -c 'import jsonschema' 2> /dev/null || exit 77
kurvo=$1 docs=$2 samples=$3 data=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "<svg data-y='up' data-em='9'><g transform='scale(1 -1)'><path transform='translate(5)' d='M0 0H1V1Z'/></g></svg>" > "$work/up.svg"
for drawing in "$work/up.svg" "$samples"/*.svg "$data"/*.svg "$data"/types.json; do
  "$kurvo" draw "$drawing" -q -o "$work/${drawing##*/}.json" 2> /dev/null
  "$kurvo" offset "$drawing" -d 1 -q -o "$work/offset-${drawing##*/}.json" 2> /dev/null
done
awk '/^```$/ { inside = 0 } inside; $0 == "```json" { inside = 1 }' "$docs/json.md" > "$work/shown.json"
"$kurvo" measure "$work/shown.json" -q --strict

python3 - "$docs/curves.schema.json" "$data/types.json" "$work"/*.json << 'PYTHON'
import copy, json, sys
from jsonschema import Draft202012Validator as Validator
schema = json.load(open(sys.argv[1]))
Validator.check_schema(schema)
validator = Validator(schema)
files = [json.load(open(name)) for name in sys.argv[2:]]
assert len(files) > 10 and all(file["shapes"] for file in files)
for name, file in zip(sys.argv[2:], files):
    for error in validator.iter_errors(file):
        sys.exit(f"{name}: {list(error.path)}: {error.message[:200]}")
# Without any one of its required members, or with one more, no curve keeps to the schema.
curves = [c for s in files[0]["shapes"] for o in s["outlines"] for c in o["curves"]]
assert len({curve["type"] for curve in curves}) == 7
for curve in curves:
    for name in set(curve) - {"clockwise", "widths"} | {"more"}:
        broken = copy.deepcopy(files[0])
        other = {k: v for k, v in (curve | {"more": 1}).items() if (k == name) == (name == "more") or k != "more" and k != name}
        broken["shapes"][0]["outlines"][0]["curves"] = [other]
        assert not validator.is_valid(broken), (curve["type"], name)
PYTHON
