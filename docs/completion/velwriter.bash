# bash completion for velwriter; source it, or put it where bash-completion looks for the name "velwriter".

_velwriter() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} words=
  local own='--event-file --upissue-file --sbmodule-file'
  COMPREPLY=()

  if [ "$COMP_CWORD" -eq 1 ]; then
    words='check export import stats format diff merge git lsp --help --version'
  else
    case $previous in
      --kind) words='events upissues sbmodules' ;;
      --sort) words='file name' ;;
      --for) words='spreadsheet translators' ;;
      --separator) words=', ; tab' ;;
      --format)
        words='text json'
        [ "$command" = export ] && words='json csv po'
        [ "$command" = check ] && words='text json github sarif'
        ;;
      --ignore)
        # Rules are parted by commas; the last one is completed.
        local done=
        [[ $current == *,* ]] && done=${current%,*},
        local rules
        rules=$("${COMP_WORDS[0]}" check --list-rules 2>/dev/null | cut -d' ' -f1)
        mapfile -t COMPREPLY < <(compgen -P "$done" -W "$rules" -- "${current##*,}")
        return
        ;;
      --baseline | --write-baseline)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
      --event-file | --upissue-file | --sbmodule-file) return ;;
    esac
  fi

  if [ -z "$words" ]; then
    case $command:$current in
      check:-*) words="--kind --format --ignore --no-ignore-file --baseline --write-baseline --watch --spelling --dictionary --list-rules $own --help" ;;
      export:-*) words="--kind --format --sort --for --separator $own --help" ;;
      import:-*) words="--kind --dry-run --write $own --help" ;;
      stats:-*) words="--kind --format $own --help" ;;
      format:-*) words="--check --write $own --help" ;;
      diff:-*) words='--format --help' ;;
      merge:-*) words='--output --name --help' ;;
      lsp:*) words='--stdio --help' ;;
      git:*) words='--enable --disable --status --help' ;;
      import:*)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
      format:* | diff:* | merge:*)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current"; shopt -s nocasematch
          compgen -f -- "$current" | while IFS= read -r file; do
            [[ $file == *.event || $file == *.upissue ]] && [ ! -d "$file" ] && printf '%s\n' "$file"
          done)
        return
        ;;
      *)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    esac
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _velwriter velwriter
