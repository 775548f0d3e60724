#!/usr/bin/env bash
# recording_test.sh TORVE_BATCH GUIDE: the commands of the guide's chapter on recordings, with the
# sample bell, give what it says.
set -euo pipefail
batch=$1 guide=$2
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"
cp "$(dirname "$batch")/../share/torve/signals/bell.wav" .

fail() {
  printf 'FAILED: %s\n' "$*" >&2
  exit 1
}

chapter=$(sed -n '/^## Your own recordings$/,/^## Diagrams$/p' "$guide")
mapfile -t commands < <(grep '^    torve-batch ' <<<"$chapter")
((${#commands[@]} >= 8 && ${#commands[@]} <= 10)) || fail "${#commands[@]} commands in the chapter"
for command in "${commands[@]}"; do
  said=$(bash -c "set -e; torve-batch() { '$batch' \"\$@\"; }; $command") || fail "$command"
  # The numbers of a delay, which the guide shows.
  if [[ $command == *" delay "* ]]; then
    shown=$(grep -E '^    (delay_[a-z]+|gain_db|peak|second_peak) ' <<<"$chapter" | tr -d '\n')
    # The last digits follow from the resampler.
    paste -d' ' <(tr -s ' ' '\n' <<<"$shown" | grep .) <(tr -s ' ' '\n' <<<"$said") |
      awk '{ d = $1 - $2; if (NF != 2 || d * d > 1e-6 || ($1 + 0 == 0 && $1 != $2)) exit 1; n++ }
        END { exit n != 12 }' || fail "the delay is $said"
  fi
done
head -n 1 right.spe | grep -qx 'size=4410' || fail "another spectrum"
[[ $(soxi -t band.flac) == flac ]] || fail "no FLAC file"
sox band.flac -n stat 2>statistics
awk '/Length/ { if ($3 < 0.4535 || $3 > 0.4536) exit 1 }
  /Rough +frequency/ { if ($3 < 300 || $3 > 600) exit 1 }
  /Maximum amplitude|Minimum amplitude/ { if ($3 > 0.9999 || $3 < -0.9999) full = 1 }
  END { exit !full }' statistics || fail "$(<statistics)"
[[ $(head -c 5 bell.pdf) == %PDF- ]] || fail "no figure"
