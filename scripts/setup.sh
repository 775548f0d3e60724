# shellcheck shell=bash
# What ./run and ./test share: packages, building, a display for a browser. Sourced, not run.

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

# port_is_taken PORT: whether somebody on this machine answers there
port_is_taken() {
  (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# check_port PORT: fails when the browser cannot be given this one
check_port() {
  if [[ ! $1 =~ ^[1-9][0-9]{0,4}$ ]] || (($1 > 65535)); then fail "TORVE_PORT is no port number: $1"; fi
  ! port_is_taken "$1" || fail "Port $1 is taken. Name another one: TORVE_PORT=$(($1 + 1)) ./run"
}

# open_browser_display PORT: starts a display that is seen in a browser, and sets DISPLAY and
# XAUTHORITY. It ends with this process, also when the script has been replaced by the program or was
# killed.
open_browser_display() {
  exec {answers}< <(exec setpriv --pdeathsig TERM -- "$root/scripts/browser_display" "$1")
  read -r -u "$answers" DISPLAY && read -r -u "$answers" XAUTHORITY || exit 1
  exec {answers}<&-
  export DISPLAY XAUTHORITY
}
