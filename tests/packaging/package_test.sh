#!/usr/bin/env bash
# package_test.sh BUILD CPACK: builds the Debian package from the build tree, unpacks it and has the
# distribution's own tools judge what is in it.
set -euo pipefail
build=$1 cpack=$2

failures=0
wrong() {
  printf 'FAILED: %s\n' "$*" >&2
  failures=$((failures + 1))
}

for tool in appstreamcli desktop-file-validate dpkg-shlibdeps gio hardening-check lintian man \
  update-mime-database xmllint; do
  command -v "$tool" >/dev/null || wrong "$tool is missing: install what packages.txt lists under [test]"
done
((failures == 0)) || exit 1

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

(cd "$build" && "$cpack" -B "$directory/package") >cpack.log 2>&1 || { cat cpack.log; exit 1; }
package=$(echo package/*.deb)
dpkg-deb -x "$package" root
usr=$directory/root/usr

# Not for the archive of the distribution, so there is no bug that asks for it.
lintian --allow-root --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs \
  "$package" || wrong "lintian"
desktop-file-validate "$usr/share/applications/torve.desktop" || wrong "menu entry"
appstreamcli validate --no-net --strict "$usr/share/metainfo/org.torve.torve.metainfo.xml" || wrong "metadata"
xmllint --noout "$usr/share/icons/hicolor/scalable/apps/torve.svg" || wrong "drawing of the icon"
icon=$(od -An -tu1 -j16 -N8 "$usr/share/icons/hicolor/48x48/apps/torve.png" | tr -s ' ')
[[ $icon == ' 0 0 0 48 0 0 0 48' ]] || wrong "the icon's width and height are the bytes $icon"

for page in "$usr"/share/man/man1/*.gz; do
  (cd "$usr/share/man" && MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" >/dev/null) 2>said ||
    wrong "$page cannot be formatted"
  [[ ! -s said ]] || wrong "$page: $(<said)"
done
for program in "$usr"/bin/*; do
  [[ -e $usr/share/man/man1/${program##*/}.1.gz ]] || wrong "${program##*/} has no manual page"
done

# Debian's start-up objects carry no marks of control-flow integrity, so no program of Debian's
# compiler can have the note that is asked for here.
hardening-check --nocfprotection "$usr"/bin/torve{,-batch,-figure} || wrong "not hardened"

# is_type TYPE NAME: what the file NAME is taken for, beside the types that everybody has.
mkdir -p data/mime/packages
cp /usr/share/mime/packages/freedesktop.org.xml "$usr"/share/mime/packages/*.xml data/mime/packages/
update-mime-database data/mime 2>said || wrong "file types: $(<said)"
is_type() {
  local type
  type=$(XDG_DATA_HOME=$PWD/data XDG_DATA_DIRS=$PWD/data gio info -a standard::content-type "$2" |
    sed -n 's/^ *standard::content-type: //p')
  [[ $type == "$1" ]] || wrong "$2 is taken for $type"
}
"$usr/bin/torve-batch" spectrum "$usr/share/torve/signals/bhld1.res" bell.spe 10000 >/dev/null
printf 'torve-diagram 1\n' | tee network.vob >network
printf '\0\0\001\272' >film.vob
printf '[gd_resource ' >game.res
is_type text/x-torve-signal "$usr/share/torve/signals/bhld1.res"
is_type text/x-torve-spectrum bell.spe
is_type text/x-torve-diagram network.vob
is_type text/x-torve-diagram network
is_type video/mpeg film.vob
is_type application/x-godot-resource game.res

# complete COMMAND WORD...: what bash offers for the last word
complete_words() {
  PATH=$usr/bin:$PATH bash -c 'source "$1"; shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    "$(complete -p "$1" | grep -o "_[a-z_]*")" "$1" "${@: -1}" "${@: -2:1}"
    printf "%s\n" "${COMPREPLY[@]}"' - "$usr/share/bash-completion/completions/$1" "$@" | sort | paste -sd ' '
}
touch bell.res bell.au bell.FLAC bell.pdf
while IFS='|' read -r typed offered; do
  # shellcheck disable=SC2086
  got=$(complete_words ${typed//_/ })
  [[ $got == "$offered" ]] || wrong "completion of \"$typed\" is \"$got\""
done <<'END'
torve bell|bell.res bell.spe
torve --|--help --scale --version
torve-batch au|autocorrelation
torve-batch cut bell|bell.au
torve-batch import bell|bell.FLAC bell.au
torve-batch plot bell|bell.res bell.spe
torve-batch spectrum --end 9 bell.res bell|bell.spe
torve-batch correlation bell.res bell.res bell|bell.res
torve-batch match bell.res --|--end --start --values
torve-batch plot bell.res 1 - --format g|gif
torve-batch figure --size 9x9 bell.pdf bell|bell.res bell.spe
torve-batch figure - --format p|pdf png
END

# Files from the menu: the workbench runs where they are.
mkdir -p stand-in files
cp "$usr/bin/torve-demo" stand-in
# shellcheck disable=SC2016
printf '#!/bin/sh\necho "$PWD $*"\n' >stand-in/torve
chmod +x stand-in/torve
touch files/a.res 'files/b c.spe'
[[ $(stand-in/torve-demo files/a.res "$PWD/files/b c.spe" bell.spe) == \
  "$PWD/files a.res b c.spe $PWD/bell.spe" ]] || wrong "files from the menu"

# Where it is put does not matter, nor that nothing there can be written to. The fonts of a picture
# show that the data are found, and a sound that the module is: without them there is none.
mv root moved
chmod -R a-w moved
mkdir work
cd work
../moved/usr/bin/torve-batch plot ../moved/usr/share/torve/signals/bhld1.res 1 bell.gif >/dev/null ||
  wrong "torve-batch finds no data after a move"
../moved/usr/bin/torve-batch export ../moved/usr/share/torve/signals/bhld1.res bell.wav >/dev/null ||
  wrong "torve-batch finds no module after a move"
../moved/usr/bin/torve-batch figure bell.pdf ../moved/usr/share/torve/signals/bhld1.res ||
  wrong "torve-batch finds no torve-figure after a move"
[[ -s bell.gif && -s bell.pdf ]] || wrong "no picture"
cd ..
chmod -R u+w moved

((failures == 0))
