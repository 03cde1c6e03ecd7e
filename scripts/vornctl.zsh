#compdef vornctl
# Completion of vornctl for zsh; installed as share/zsh/site-functions/_vornctl. What may stand where is told by
# "vornctl complete".

_vornctl() {
  local line current=${(Q)PREFIX} result=1
  local -a before=("${(@Q)words[2,CURRENT-1]}") columns offered shown openOffered openShown
  # Names count in upper and lower case.
  local -a match=(-M 'm:{[:lower:][:upper:]}={[:upper:][:lower:]}')
  for line in "${(@f)$($words[1] --timeout 1 complete -- "$before[@]" "$current" 2>/dev/null)}"; do
    columns=("${(@ps:\t:)line}")
    if [[ -z $columns[1] ]]; then
      case $columns[2] in
        folders) _files -/ && result=0 ;;
        files)
          if [[ -n $columns[3] ]]; then
            _files -g "*.$columns[3]" && result=0
          else
            _files && result=0
          fi
          ;;
      esac
    elif [[ $columns[1] == *[+/] ]]; then
      # More follows the modifiers of a chord and the beginning of a path.
      openOffered+=("$columns[1]")
      openShown+=("$columns[1]")
    else
      offered+=("$columns[1]")
      shown+=("$columns[1]${columns[2]:+  -- $columns[2]}")
    fi
  done
  local -a list=()
  [[ "$shown[*]" == *'  -- '* ]] && list=(-l)
  (($#offered)) && compadd -V offers "$match[@]" "$list[@]" -d shown -a offered && result=0
  (($#openOffered)) && compadd -V beginnings "$match[@]" -S '' -d openShown -a openOffered && result=0
  return result
}

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then
  _vornctl "$@"
else
  compdef _vornctl vornctl
fi
