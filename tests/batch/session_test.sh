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

# What is cut is what sox reads, sample by sample.
expect 0 "$batch" cut made.au cut.res 0.1 0.5
sox made.au -t f32 - trim 4410s 17641s | od -An -v -t f4 -w4 | awk '{ printf "%.6f\n", $1 }' >by_sox
cut -d' ' -f2 cut.res | paste - by_sox |
  awk '{ d = $1 - $2; if (NF != 2 || d > 2e-6 || d < -2e-6) exit 1 }' || fail "sox reads others"

# The band holds the string's 440 Hz, scaled by 2 x 44100 / K; sox measures it.
expect 0 "$batch" spectrum cut.res cut.spe all
expect 0 "$batch" band-pass cut.res cut.spe band.res 300 600
awk '{ print $1, $2 * 17642 / 88200 }' band.res >scaled.res
expect 0 "$batch" to-au scaled.res back.au
sox back.au -n stat 2>stat || fail "sox cannot read what was written: $(<stat)"
awk '/Rough +frequency/ { exit !($3 > 420 && $3 < 460) }' stat || fail "$(<stat)"
awk '/Samples read/ { exit !($3 == 17642) }' stat || fail "$(<stat)"

# The bell struck 1544 samples later in the second of the signals that are installed, all of them
# 16-bit numbers; the third is what is left of their match.
signals=$(dirname "$batch")/../share/torve/signals
awk '{ d = $2 * 32768; d -= int(d + 1000000.5) - 1000000; if (d > 0.02 || d < -0.02) exit 1 }' \
  "$signals"/bhld[12].res || fail "not of 16 bits"
expect 0 "$batch" match "$signals"/bhld1.res "$signals"/bhld2.res rest.res 1000 0.7 all
grep -q 'offset_best=1544 ' said || fail "the match is elsewhere: $(<said)"
cmp rest.res "$signals"/compar3.res || fail "other remains"

# Streams: the data on standard output alone.
"$batch" to-au - - <scaled.res 2>said | cmp - back.au || fail "other bytes through a pipe"

# Pictures: 17641 points 0.02 pixels apart are as many segments but one; a pane is 171 rows high.
expect 0 "$batch" plot cut.res 2 cut.eps
[[ $(grep -c 'rlineto stroke' cut.eps) -gt 17640 ]] || fail "segments are missing"
expect 0 "$batch" plot cut.spe 3 cut.gif 0 1 0.4 1 all
[[ $(od -An -tu2 -j6 -N4 cut.gif | tr -s ' ') == ' 957 171' ]] || fail "size of the picture"

expect 0 "$batch" --version
expect 0 "$batch" --help
for wrong in '' nothing 'cut made.au' 'cut made.au x.res 0 much' 'report a b' 'plot cut.res 4 x' \
  'plot cut.res 1 -' 'report -' 'match cut.res cut.res x -5'; do
  # shellcheck disable=SC2086
  expect 1 "$batch" $wrong
done
for failing in 'report cut.res' 'cut cut.res x.res 0 1' 'to-au none.res x' 'spectrum none.res x' \
  'spectrum cut.res /dev/full' 'autocorrelation none.res 1' 'correlation cut.res none.res 1' \
  'match none.res cut.res x 0 1 all' 'plot none.res 1 none.eps' 'plot cut.res 1 none/x.eps'; do
  # shellcheck disable=SC2086
  expect 2 "$batch" $failing
  said "torve-batch: ${failing%% *} failed"
  [[ $failing != *none.res* ]] || grep -q 'none\.res' said || fail "$failing: which file? $(<said)"
done
[[ ! -e none.eps ]] || fail "an output without an input"
if ldd "$batch" | grep -q libX; then fail "links X"; fi
