# Completion of vornctl for bash; installed as share/bash-completion/completions/vornctl. What may stand where is told by
# "vornctl complete".

_vornctl() {
  local program=${1:-vornctl} current=${COMP_WORDS[COMP_CWORD]} line word kind extension
  # As it is meant, where it was quoted by backslashes.
  current=${current//\\/}
  COMPREPLY=()
  while IFS= read -r line; do
    word=${line%%$'\t'*}
    if [[ -n $word ]]; then
      # Names count in upper and lower case.
      [[ ${word,,} == "${current,,}"* ]] && COMPREPLY+=("$(printf '%q' "$word")")
      continue
    fi
    IFS=$'\t' read -r kind extension <<<"$line"
    compopt -o filenames 2>/dev/null
    if [[ $kind == files ]]; then
      mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f ${extension:+-X "!*.$extension"} -- "$current")
      [[ -n $extension ]] || continue
    fi
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$current")
  done < <("$program" --timeout 1 complete -- "${COMP_WORDS[@]:1:COMP_CWORD-1}" "$current" 2>/dev/null)
  # More follows the modifiers of a chord and the beginning of a path.
  if [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == *[+/] ]]; then compopt -o nospace 2>/dev/null; fi
  return 0
}

complete -F _vornctl vornctl
