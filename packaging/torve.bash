# shellcheck shell=bash
# bash completion for torve and torve-demo: the files that they open.

_torve() {
  local ending
  mapfile -t COMPREPLY < <(
    compgen -d -- "$2"
    for ending in res spe vob; do compgen -f -X "!*.$ending" -- "$2"; done
    if [[ $1 == *torve ]]; then compgen -W '--help --version' -- "$2"; fi
  )
  compopt -o filenames 2>/dev/null
}
complete -F _torve torve torve-demo
