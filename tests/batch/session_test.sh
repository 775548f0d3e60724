#!/usr/bin/env bash
# session_test.sh TORVE_BATCH: a session from a recording to a filtered sound, with sox on both ends.
set -euo pipefail
batch=$1
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

# expect STATUS COMMAND...: its output goes to the file "said"
expect() {
  local wanted=$1 status=0
  shift
  "$@" >said 2>&1 || status=$?
  [[ $status == "$wanted" ]] || fail "status $status instead of $wanted from $*: $(<said)"
}

said() {
  grep -qFx -- "$1" said || fail "no line \"$1\" in: $(<said)"
}

# The comment makes the header 68 bytes long. sox marks little-endian files in its own way.
sox -R -n -r 44100 -c 1 -e floating-point -b 32 -L --comment "$(printf 'x%.0s' {1..43})" made.au \
  synth 1 pluck 440 gain -6
printf 'dns.' | dd of=made.au conv=notrunc status=none
expect 0 "$batch" report made.au </dev/null
said '4 Data offset (=header length)=68'
said '12 Encoding=6'

# What is cut is what sox reads, sample by sample.
expect 0 "$batch" cut made.au cut.res 0.1 0.5
[[ $(wc -l <cut.res) == 17641 ]] || fail "$(wc -l <cut.res) lines were cut"
sox made.au -t f32 - trim 4410s 17641s | od -An -v -t f4 -w4 | awk '{ printf "%.6f\n", $1 }' >by_sox
cut -d' ' -f2 cut.res | paste - by_sox |
  awk '{ d = $1 - $2; if (d > 2e-6 || d < -2e-6) exit 1 }' || fail "sox reads other samples"

expect 0 "$batch" autocorrelation cut.res 1
said 'done'
expect 0 "$batch" correlation cut.res autocor1.res 2
expect 0 "$batch" match cut.res cut.res rest.res 0 1 12000
said 'offset_best=0 ave3min=0.000000 samples=10899'
expect 0 "$batch" spectrum cut.res cut.spe all
[[ $(head -1 cut.spe) == size=17642 ]] || fail "the spectrum begins with $(head -1 cut.spe)"
expect 0 "$batch" out-of-band cut.res cut.spe quiet.res 100 22000
expect 0 "$batch" band-pass cut.res cut.spe band.res 300 600

# The band holds the string's 440 Hz, scaled by 2 x 44100 / K; sox measures it.
awk '{ print $1, $2 * 17642 / 88200 }' band.res >scaled.res
expect 0 "$batch" to-au scaled.res back.au
sox back.au -n stat 2>stat || fail "sox cannot read what was written: $(<stat)"
awk '/Rough +frequency/ { exit !($3 > 420 && $3 < 460) }' stat || fail "$(<stat)"
awk '/Samples read/ { exit !($3 == 17642) }' stat || fail "$(<stat)"

# Streams: the data on standard output alone.
"$batch" to-au - - <scaled.res 2>said | cmp - back.au || fail "other bytes through a pipe"
said 'make_au_file'

# Pictures: 17641 points 0.02 pixels apart are as many segments but one; a pane is 171 rows high.
expect 0 "$batch" plot cut.res 2 cut.eps
[[ $(grep -c 'rlineto stroke' cut.eps) -gt 17640 ]] || fail "segments are missing"
grep -qF '(cut.res) show' cut.eps || fail "no title"
expect 0 "$batch" plot cut.spe 3 cut.gif 0 1 0.4 1 all
[[ $(od -An -tu2 -j6 -N4 cut.gif | tr -s ' ') == ' 957 171' ]] || fail "size of the picture"
expect 2 "$batch" plot none.res 1 none.eps
[[ ! -e none.eps ]] || fail "an output without an input"

expect 0 "$batch" --version
expect 0 "$batch" --help
for wrong in '' 'nothing' 'cut made.au' 'cut made.au x.res 0 much' 'report a b' \
  'plot cut.res 4 x.gif'; do
  # shellcheck disable=SC2086
  expect 1 "$batch" $wrong
done
expect 2 "$batch" report cut.res
said 'not au-file'
expect 2 "$batch" to-au none.res x.au
expect 2 "$batch" spectrum cut.res /dev/full
expect 2 "$batch" autocorrelation none.res 1
if ldd "$batch" | grep -q libX; then fail "links X"; fi
