# shellcheck shell=bash
# What ./run and ./test share: packages, building, a private X server. Sourced, not run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() {
  printf '%s\n' "$*" >&2
}

fail() {
  say "$@"
  exit 1
}

# packages SECTION...: the package names of these sections of packages.txt
packages() {
  awk -v wanted=" $* " '
    /^\[.*\]$/ { inside = index(wanted, " " substr($0, 2, length($0) - 2) " "); next }
    inside && NF && !/^#/ && !seen[$1]++ { print $1 }' "$root/packages.txt"
}

# missing PACKAGE...: those that are not installed
missing() {
  local name
  for name in "$@"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || echo "$name"
  done
}

# install_packages SECTION...: installs what is missing, as root or through sudo
install_packages() {
  local wanted lacking as_root=()
  mapfile -t wanted < <(packages "$@")
  if ! command -v dpkg-query >/dev/null; then
    say "This is no Debian system. If the build fails, install what Debian calls: ${wanted[*]}"
    return
  fi
  mapfile -t lacking < <(missing "${wanted[@]}")
  ((${#lacking[@]})) || return 0
  if ((EUID != 0)); then
    command -v sudo >/dev/null || cannot_install "${lacking[@]}"
    as_root=(sudo)
  fi
  say "Installing ${lacking[*]}"
  "${as_root[@]}" apt-get -q update || say "The package lists could not be renewed; trying with the old ones."
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -q -y install --no-install-recommends "${lacking[@]}" || cannot_install "${lacking[@]}"
}

cannot_install() {
  say "These packages are missing and could not be installed: $*"
  fail "As root, run: apt-get install --no-install-recommends $*"
}

# build PRESET [TARGET...]: configures and builds, everything or the given targets
build() {
  local preset=$1
  shift
  (cd "$root" && cmake --preset "$preset" && cmake --build --preset "$preset" ${1:+--target "$@"}) >&2
}

# start_private_display: starts an X server nobody sees and sets DISPLAY. The server ends with this
# process, also when the script has been replaced by the program or was killed.
start_private_display() {
  local folder number
  folder=$(mktemp -d)
  mkfifo "$folder/number"
  setpriv --pdeathsig TERM -- Xvfb -displayfd 3 -screen 0 1024x768x24 -noreset -nolisten tcp \
    3>"$folder/number" >"$folder/log" 2>&1 &
  # Without a server the pipe ends and the number stays empty.
  read -r number <"$folder/number" || number=
  [[ -n $number ]] || fail "The private X server did not start: $(cat "$folder/log")"
  rm -r "$folder"
  export DISPLAY=":$number"
}
