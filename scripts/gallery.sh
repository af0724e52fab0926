#!/usr/bin/env bash
# Draws the gallery: twelve hard cases as SVG in docs/gallery/, inputs and results, offsets of the
# samples, and the page that shows them with the command that makes each.
# usage: scripts/gallery.sh [CLIENT]
# CLIENT is the program `kurvo`; without one that can combine only the inputs are made.
set -euo pipefail
cd "$(dirname "$0")/.."

client=${1:-build/release/tools/kurvo}
gallery=docs/gallery
mkdir -p "$gallery"
page=$gallery/README.md
can=false
[[ -x $client ]] && "$client" combine --help > /dev/null 2>&1 && can=true

# svg FILE PATH [RULE]: a picture of one path.
svg() {
  cat > "$1" <<EOF
<svg xmlns="http://www.w3.org/2000/svg" viewBox="-100 -100 1200 1200" width="300" height="300">
  <path fill="#3d7ea6" fill-opacity="0.5" fill-rule="${3:-nonzero}" stroke="#12354a" stroke-width="2" d="$2"/>
</svg>
EOF
}

cat > "$page" <<'EOF'
# Gallery

Twelve cases that engines for outlines fail at: inputs, result and the command between them. Curves
stay curves. `scripts/gallery.sh` draws them again.

| Case | Inputs | Result |
|---|---|---|
EOF

# case_of NAME WORDS COMMAND PATH_A [PATH_B [RULE]]: COMMAND is `clean`, or an operation of `combine`.
case_of() {
  local name=$1 words=$2 command=$3 a=$gallery/$1.a.svg b=$gallery/$1.b.svg out=$gallery/$1.svg
  svg "$a" "$4" "${6:-}"
  local line="clean $name.a.svg -o $name.svg" shown="![]($name.a.svg)"
  if [[ $command != clean ]]; then
    svg "$b" "$5"
    line="combine $name.a.svg $name.b.svg --$command -o $name.svg" shown+=" ![]($name.b.svg)"
  fi
  printf '| %s<br>`kurvo %s` | %s | ![](%s.svg) |\n' "$words" "$line" "$shown" "$name" >> "$page"
  if $can; then
    (cd "$gallery" && "$OLDPWD/$client" $line -q)
  fi
}

# Paths. turned ANGLE DX DY PATH: in radians about the middle, then moved; absolute M L Q C only.
turned() {
  awk -v angle="$1" -v dx="$2" -v dy="$3" '{
    c = cos(angle); s = sin(angle); gsub(/[MLQCZ]/, " & "); n = split($0, word, " ")
    for (i = 1; i <= n; ++i)
      if (word[i] ~ /[MLQCZ]/) printf "%s", word[i]
      else { x = word[i] - 500; y = word[++i] - 500
             printf " %.17g %.17g", c * x - s * y + 500 + dx, s * x + c * y + 500 + dy }
  }' <<< "$4"
}
ring='M500 0C224 0 0 200 0 480C0 790 224 1000 500 1000C776 1000 1000 790 1000 480C1000 200 776 0 500 0ZM500 120C690 120 850 280 850 490C850 720 690 880 500 880C310 880 150 720 150 490C150 280 310 120 500 120Z'
ess='M860 800C780 930 660 1000 500 1000C290 1000 140 890 140 720C140 560 250 480 470 430C680 385 740 340 740 260C740 170 640 110 500 110C370 110 260 170 190 270L90 190C170 70 320 0 500 0C730 0 880 110 880 275C880 430 780 510 540 565C340 610 280 650 280 730C280 820 370 890 500 890C610 890 700 840 760 740Z'
ribbon='M0 200C1500 1200 -500 1200 1000 200L1000 100C-700 1300 1700 1300 0 100Z'
circle() { echo "M$(($1 - $3)) $2A$3 $3 0 0 1 $(($1 + $3)) $2A$3 $3 0 0 1 $(($1 - $3)) $2Z"; }
square() { echo "M$1 $2L$(($1 + $3)) $2L$(($1 + $3)) $(($2 + $3))L$1 $(($2 + $3))Z"; }
leaves() {  # N: all through the middle
  awk -v n="$1" 'BEGIN { for (i = 0; i < n; ++i) { a = 6.283185307179586 * i / n; b = a + .4
    printf "M500 500C%.9f %.9f %.9f %.9f 500 500Z", 500 + 650 * cos(a), 500 + 650 * sin(a), 500 + 650 * cos(b), 500 + 650 * sin(b) } }'
}
stairs() {  # SHIFT
  awk -v shift="$1" 'BEGIN { printf "M%s 0", shift
    for (i = 0; i < 20; ++i) printf "L%.9f %dL%.9f %d", 50 * (i + 1) + shift, 50 * i, 50 * (i + 1) + shift, 50 * (i + 1)
    printf "L%s 1000Z", shift }'
}

case_of 01-letters 'Two letters' union "$ring" "$(turned .3 80 -40 "$ess")"
case_of 02-slid 'A letter and itself, slid by a thousandth of a unit' difference "$ess" "$(turned 0 1e-3 -7e-4 "$ess")"
case_of 03-turned 'A letter and itself, turned by 1e-7 radians' union "$ess" "$(turned 1e-7 0 0 "$ess")"
case_of 04-identical 'The same letter twice' intersection "$ring" "$ring"
case_of 05-ribbon 'A ribbon that crosses itself' clean "$ribbon"
case_of 06-fan 'Sixty-four leaves that meet in one point' clean "$(leaves 64)"
case_of 07-ladder 'A ladder of twenty-four copies' clean "$(for ((i = 0; i < 24; ++i)); do turned 0 $((4 * i)) $((i)) "$ess"; done)"
case_of 08-grid 'Squares that touch along their sides' clean "$(for ((i = 0; i < 100; ++i)); do square $((i % 10 * 100)) $((i / 10 * 100)) 100; done | paste -sd ' ')"
case_of 09-stairs 'Stairs, half a step apart' xor "$(stairs 0)" "$(stairs 25)"
case_of 10-touching 'A hole that touches its outline' difference "$(square 0 0 1000)" "$(circle 400 500 400)"
case_of 11-nest 'Rings in rings, by even-odd' clean "$(for ((i = 1; i <= 25; ++i)); do circle 500 500 $((20 * i)); done | paste -sd ' ')" '' evenodd
case_of 12-tangent 'Two discs that touch, in a third that touches both' xor "$(circle 250 500 250)$(circle 750 500 250)" "$(circle 500 500 500)"

# sample_of NAME WORDS ARGUMENTS: a picture of what is made of a sample.
sample_of() {
  printf '| %s<br>`kurvo %s --picture %s.svg` | ![](%s.svg) |\n' "$2" "$3" "$1" "$1" >> "$page"
  if $can; then "$client" $3 --size 500 -q --picture "$gallery/$1.svg" 2> /dev/null; fi
}
printf '\n%s\n\n|  |  |\n|---|---|\n' 'Offsets and strokes of the samples, whole outlines at once:' >> "$page"
sample_of kerf 'Kerf around a bracket and in its holes' 'offset samples/bracket.svg --outside 1.5mm'
sample_of rings 'Four cuts around it, each made of the bracket itself' 'offset samples/bracket.svg --rings 4 --step 2mm'
sample_of seam 'Seam allowance with mitred corners' 'offset samples/bodice.svg --outside 10mm --join miter'
sample_of outlined 'Letters outlined' 'offset samples/letters.svg --outside 12'
sample_of inlined 'Letters inlined' 'offset samples/letters.svg --inside 12'
sample_of dashes 'A pen with dashes' 'stroke samples/bracket.svg --width 3mm --dash 8mm,4mm --cap round'

if $can; then echo "Drawn: $page"; else echo "Inputs only: $client cannot combine."; fi
