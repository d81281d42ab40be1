# bash completion for hearthmake. The command itself knows what may stand where.

_hearthmake() {
  local program answer
  program=$(type -P -- "${1/#\~/$HOME}") || program=hearthmake
  mapfile -t answer < <("$program" __complete bash "${COMP_LINE:0:COMP_POINT}" "$2" 2>/dev/null)
  COMPREPLY=("${answer[@]:1}")
  # Paths are for readline to find and to quote.
  [ ${#COMPREPLY[@]} -eq 0 ] || return 0
  case ${answer[0]} in
    files) compopt -o default ;;
    folders)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$2")
      ;;
  esac
}
complete -F _hearthmake hearthmake
