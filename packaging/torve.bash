# shellcheck shell=bash
# bash completion for torve and torve-demo: the files that they open.

_torve() {
  local ending
  if [[ $1 == *torve && $3 == --scale ]]; then
    mapfile -t COMPREPLY < <(compgen -W '1 2 3 4 5 6 7 8' -- "$2")
    return
  fi
  mapfile -t COMPREPLY < <(
    compgen -d -- "$2"
    for ending in res spe vob; do compgen -f -X "!*.$ending" -- "$2"; done
    if [[ $1 == *torve ]]; then compgen -W '--help --scale --version' -- "$2"; fi
  )
  compopt -o filenames 2>/dev/null
}
complete -F _torve torve torve-demo
