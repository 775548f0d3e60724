# shellcheck shell=bash
# bash completion for torve-batch. What the commands are, and what follows them, its help says.

# _torve_batch_parameters COMMAND: the words behind a command; commands alone without one.
_torve_batch_parameters() {
  torve-batch --help 2>/dev/null | awk -v command="$1" '
    /^  [a-z]/ && command == "" { print $1 }
    /^  [a-z]/ && $1 == command { $1 = ""; gsub(/[][]/, ""); print }'
}

_torve_batch() {
  local words=() word parameter='' ending parameters i
  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W "$(_torve_batch_parameters '') --help --version" -- "$2")
    return
  fi
  read -ra parameters < <(_torve_batch_parameters "${COMP_WORDS[1]}")
  if [[ $3 == --format ]]; then
    word='eps gif'
    [[ ${COMP_WORDS[1]} != figure ]] || word='pdf svg png'
    mapfile -t COMPREPLY < <(compgen -W "$word" -- "$2")
    return
  fi
  if [[ $2 == -* ]]; then
    word="${parameters[*]}"
    word=${word/RANGE/--start --end}
    for i in $word; do [[ $i != --* ]] || words+=("$i"); done
    mapfile -t COMPREPLY < <(compgen -W "${words[*]}" -- "$2")
    return
  fi
  # Options and their values take no place among the files.
  for ((i = 2; i <= COMP_CWORD; ++i)); do
    case ${COMP_WORDS[i]} in
      --start | --end | --average | --format | --size | --title) ((++i)) ;;
      --*) ;;
      *) parameter=${parameters[${#words[@]}]-}; words+=("$i") ;;
    esac
  done
  case ${COMP_WORDS[1]}:$parameter in
    figure:OUT) ending='@(pdf|svg|png)' ;;
    figure:*) ending='@(res|spe|vob)' ;;
    *.*\|*.*) ending="@(${parameter//OUT./})" ;;
    *.*) ending=${parameter##*.} ;;
    *:SOUND) ending='@(wav|flac|aif|aiff|au|ogg|opus|mp3|caf|snd)' ;;
    *:IN) ending='@(res|spe)' ;;
    *:OUT) ending='@(eps|gif)' ;;
    *) return ;;
  esac
  mapfile -t COMPREPLY < <(
    compgen -d -- "$2"
    shopt -s extglob nocasematch
    compgen -f -X "!*.$ending" -- "$2"
  )
  compopt -o filenames 2>/dev/null
}
complete -F _torve_batch torve-batch
