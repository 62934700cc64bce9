# Completion of the program qzxml for bash.

# Files with a beginning and the ending ".xsd", and folders; all files where there are none.
_qzxml_schemas() {
  mapfile -t COMPREPLY < <(compgen -f -X '!*.xsd' -- "$1" && compgen -d -- "$1")
  [ ${#COMPREPLY[@]} -gt 0 ] || mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

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
  # "--to=json" comes as three words.
  if [ "$current" = '=' ]; then
    current=
  elif [ "$before" = '=' ]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
  local words= kind=file
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
        --output | -o) kind=folder ;;
        --catalog | --depfile) ;;
        *)
          kind=schema
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
    return
  fi
  compopt -o filenames 2>/dev/null
  case $kind in
    folder) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
    schema) _qzxml_schemas "$current" ;;
    *) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
  esac
}

complete -F _qzxml qzxml
