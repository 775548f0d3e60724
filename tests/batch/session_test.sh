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
sox back.au -n stat 2>statistics || fail "sox cannot read what was written"
awk '/Rough +frequency/ { exit !($3 > 420 && $3 < 460) }' statistics || fail "$(<statistics)"
awk '/Samples read/ { exit !($3 == 17642) }' statistics || fail "$(<statistics)"

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

expect 0 "$batch" band-pass cut.res x.spe x.res 22050 22050 10000

# Pictures: 17641 points 0.02 pixels apart are as many segments but one; a pane is 171 rows high.
expect 0 "$batch" plot cut.res 2 cut.eps
[[ $(grep -c 'rlineto stroke' cut.eps) -gt 17640 ]] || fail "segments are missing"
expect 0 "$batch" plot cut.spe 3 cut.gif 0 1 0.4 1 all
[[ $(od -An -tu2 -j6 -N4 cut.gif | tr -s ' ') == ' 957 171' ]] || fail "size of the picture"
printf 'size=8\n0 1000\n1 100\n2 10\n3 1\n4 100\n' >steps.spe
expect 0 "$batch" plot steps.spe 1 steps.eps --db
grep -q '(dB) show' steps.eps || fail "no decibels"
# A tenth is as far below everywhere, and 20 dB twice as far.
[[ $(grep -oE 'CX (-15|30) CX rlineto' steps.eps | sort | uniq -c | tr -s ' \n' ' ') == \
  ' 3 CX -15 CX rlineto 1 CX 30 CX rlineto ' ]] || fail "no scale of decibels"

# Parts of signals, names of their own, and a line for scripts.
expect 0 "$batch" match "$signals"/bhld1.res "$signals"/bhld2.res rest.res 1000 0.7 --values
[[ $("$batch" match "$signals"/bhld1.res "$signals"/bhld2.res rest.res 1000 --values 2>said) == \
  '1544 0.892600 0.448783' ]] || fail "other values"
grep -q '^offset_best=1544' said || fail "no prose"
head -n 12000 cut.res | tail -n 10500 >part.res
for analysis in spectrum autocorrelation; do
  expect 0 "$batch" "$analysis" part.res one.res
  expect 0 "$batch" "$analysis" cut.res two.res --start 1500 --end 12000
  cmp one.res two.res || fail "another part: $analysis"
done
timeout 20 "$batch" autocorrelation - one.res --end 300 < <(yes '0 0.5') >said || fail "no end"
[[ $(wc -l <one.res) == 300 ]] || fail "not what came first"

expect 0 "$batch" --version
expect 0 "$batch" --help
for wrong in '' nothing 'cut made.au' 'cut made.au x.res 0 much' 'cut made.au x.res 2 1' 'report a b' \
  'plot cut.res 4 x.eps' 'plot cut.res 1 x.png' 'plot cut.res 1 -' 'report -' \
  'match cut.res cut.res x -5' 'match cut.res cut.res - --values' 'spectrum cut.res x --start' \
  'spectrum cut.res x --start 5 --end 5' 'cut made.au x.res 0 1 --end 5' \
  'band-pass cut.res x y 500 400' 'band-pass cut.res x y 22051 22051'; do
  # shellcheck disable=SC2086
  expect 1 "$batch" $wrong
done

echo old >old.wav
(ulimit -f 1 && expect 2 "$batch" export cut.res old.wav)
[[ $(<old.wav) == old ]] || fail "what was there is lost"

# What fails says why, and what it empties is kept: command | last line | what old.* holds.
head -n 3 cut.res >few.res
awk '{ print $1 / 44100, $2 }' few.res >time.res
printf '' >none.spe
while IFS='|' read -r failing reason left; do
  rm -f old.*
  echo old | tee old.res old.eps >old.au
  # shellcheck disable=SC2086
  expect 2 "$batch" $failing
  grep -qF "torve-batch: ${failing%% *}: $reason" said || fail "$failing: $(<said)"
  for old in old.res old.au old.eps; do
    case $old-$left in
      old.res-kept | old.au-header) [[ $(<$old.bak) == old ]] && said "torve-batch: kept as $old.bak" ;;
      *) [[ $(<$old) == old && ! -e $old.bak ]] ;;
    esac || fail "$failing: $old"
  done
done <<'END'
report cut.res|cut.res: not an AU file|
report none.au|none.au: there is no such file|
report .|.: cannot be read|
to-au none.res old.au|none.res: there is no such file|header
to-au . old.au|.: cannot be read|header
to-au cut.res no/x.au|no/x.au: cannot be written|
cut cut.res old.res 0 1|cut.res: not an AU file|kept
cut none.au old.res 0 1|none.au: there is no such file|
cut . old.res 0 1|.: cannot be read|
cut made.au /dev/full 0 1|/dev/full: could not be written|
cut made.au no/x.res 0 1|no/x.res: cannot be written (No such file|
autocorrelation none.res old.res|none.res: there is no such file|
autocorrelation . old.res|.: cannot be read|
autocorrelation cut.res no/x.res|no/x.res: cannot be written|
correlation cut.res none.res old.res|none.res: there is no such file|
correlation . cut.res old.res|.: cannot be read|
correlation cut.res cut.res no/x.res|no/x.res: cannot be written|
match none.res cut.res old.res|none.res: there is no such file|
match cut.res . old.res|.: cannot be read|
match cut.res cut.res no/x.res|no/x.res: cannot be written|
match cut.res few.res old.res|few.res: too few samples|kept
match cut.res cut.res old.res 90000|cut.res: no match near the start|kept
spectrum none.res old.res|none.res: there is no such file|
spectrum . old.res|.: cannot be read|
spectrum cut.res no/x.spe|no/x.spe: cannot be written|
spectrum few.res old.res|few.res: too few samples|kept
spectrum cut.res /dev/full|/dev/full: could not be written (No space|
band-pass few.res old.res x 1 2|few.res: too few samples|kept
band-pass none.res old.res x 1 2|none.res: there is no such file|
band-pass cut.res no/x.spe old.res 1 2|no/x.spe: cannot be written|
out-of-band . x.spe old.res 1 2|.: cannot be read|
out-of-band cut.res x.spe no/x.res 1 2|no/x.res: cannot be written|
plot none.res 1 old.eps|none.res: there is no such file|
plot . 1 old.eps|.: cannot be read|
plot few.res 1 old.eps 4|few.res: has fewer lines than are to be skipped|
plot none.spe 1 old.eps|none.spe: there is nothing to draw|
plot cut.res 1 no/x.EPS|no/x.EPS: cannot be written|
END

# Results on standard output that do not arrive.
# shellcheck disable=SC2016
for lost in '"$batch" --help >/dev/full' '"$batch" report made.au </dev/null >/dev/full' \
  '"$batch" to-au cut.res - >/dev/full' '"$batch" to-au cut.res - >&-' '"$batch" to-au - x.au <&-' \
  '"$batch" to-au - x.au <.'; do
  status=0
  eval "$lost" 2>said || status=$?
  [[ $status == 2 ]] || fail "status $status from $lost"
  grep -q '^torve-batch: .*standard' said || fail "$lost: $(<said)"
done

# What is taken otherwise than it may be meant.
seq 0 12000 | awk '{ print $1, $1 }' >trend.res
head -n 100001 < <(yes '0 0') >long.res
printf '\003' | dd of=made.au bs=1 seek=12 conv=notrunc status=none
while IFS='|' read -r command warning; do
  # shellcheck disable=SC2086
  expect 0 "$batch" $command
  grep -qF "torve-batch: $warning" said || fail "$command: $(<said)"
done <<'END'
plot long.res 1 x.gif|warning: long.res has more than 100000 lines
autocorrelation time.res x.res|warning: time.res has a time
cut made.au x.res 0 1|warning: made.au is not mono (1 channel), 44100 Hz, 32-bit floating point (encoding 6): channels 1, 44100 Hz, encoding 3; torve-batch import
cut made.au x.res 90 91|warning: x.res has no samples
match cut.res cut.res x.res 0 0.5|no match: the scale is at the end
match trend.res trend.res x.res 1200|no match: the offset is at the end
END
# What the workbench says needs no display.
unset DISPLAY
while IFS='|' read -r wanted words text; do
  # shellcheck disable=SC2086
  expect "$wanted" "${batch%-batch}" $words
  grep -qF -- "$text" said || fail "torve $words: $(<said)"
done <<'END'
0|--help|usage: torve [--scale N] [FILE ...]
1|--scale 9|torve: --scale: needs a number from 1 to 8
1|a.res --scale|torve: --scale: needs a number from 1 to 8
0|--version|torve 
1|--start|torve: --start: no option
1|cut.au|torve: cut.au: neither .res, .spe nor .vob
1|a.res b.spe c.res d.res|torve: d.res: there are three panes
1|a.vob b.vob|torve: b.vob: a second diagram
255|a.res b.res a.vob|X not started
END
if ldd "$batch" | grep -q libX; then fail "links X"; fi
