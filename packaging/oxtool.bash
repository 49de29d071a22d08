# Completion of oxtool's command line. Commands, options and the values of some options are those that its help tells.
_oxtool() {
  local program=$1 word=$2 before=$3 help
  if [ "$COMP_CWORD" -eq 1 ]; then
    help=$("$program" --help 2>/dev/null | awk '/^  [a-z-]/ { gsub(",", ""); for (i = 1; i <= 2; ++i) if ($i ~ /^-/ || i == 1) print $i }')
  else
    help=$("$program" "${COMP_WORDS[1]}" --help 2>/dev/null)
    case $word in
      -*) help=$(awk '/^  -/ { gsub(",", ""); for (i = 1; $i ~ /^-/; ++i) print $i }' <<<"$help") ;;
      # "--generation 2|3": the values stand behind the option.
      *) help=$(awk -v option="$before" '$1 == option && $2 ~ /\|/ { gsub("[|]", "\n", $2); print $2 }' <<<"$help") ;;
    esac
  fi
  mapfile -t COMPREPLY < <(compgen -W "$help" -- "$word")
}
complete -o default -F _oxtool oxtool
