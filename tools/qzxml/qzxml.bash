# Completion of the program qzxml for bash.

_qzxml() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= word
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $word in
      convert | generate | inspect)
        command=$word
        break
        ;;
    esac
  done
  COMPREPLY=()
  local words=
  case $command in
    '')
      words='convert generate inspect --help --version'
      ;;
    convert)
      case $before in
        --to) words='xml fastinfoset json' ;;
        --round-trip) words='none marked full' ;;
        --indent) words='0 2 4 8' ;;
        --root) return ;;
        *)
          [[ $current == -* ]] &&
            words='--to --gzip --indent --round-trip --root --strict --help'
          ;;
      esac
      ;;
    generate)
      case $before in
        --namespace | -n | --map | --parts | --part-name) return ;;
        *)
          [[ $current == -* ]] &&
            words='--output --namespace --map --catalog --depfile --parts --part-name --list --help'
          ;;
      esac
      ;;
    inspect)
      [[ $current == -* ]] && words='--octets --help'
      ;;
  esac
  if [ -n "$words" ]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}

complete -F _qzxml qzxml
