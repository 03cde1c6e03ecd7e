#!/usr/bin/env zsh
# What the completion of vornctl offers in zsh; $1 is its script, $2 the folder of vornctl. Needs no engine.
emulate -R zsh
zmodload zsh/zpty
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/files" "$folder/bin" "$folder/files/All.SkarnProfiles"
touch "$folder/files/Mine.SkarnProfile" "$folder/files/other.txt"
export DBUS_SESSION_BUS_ADDRESS=disabled: TERM=dumb ZDOTDIR=$folder VORNCTL=${2:A}/vornctl PATH=$folder/bin:$PATH
ln -s "${0:A:h}/completion_vornctl.sh" "$folder/bin/vornctl"

# A shell with a terminal, which tells its line as soon as the completion has had its turn.
zpty shell zsh -f -i
read_until() {
  local text
  zpty -r -m shell text "*$1*" || { print -r "the shell has ended: $text"; exit 1; }
  reply=${${text%%$1*}##*<LINE }
}
zpty -w shell "PS1= PS2=; cd ${(q)folder}/files; autoload -Uz compinit; compinit -u -D; source ${(q)1:A}"
zpty -w shell 'zstyle ":completion:*" list-prompt ""; setopt no_auto_menu no_list_beep'
zpty -w shell 'tell() { zle complete-word; print -r -- "<LINE ${BUFFER} LINE>"; BUFFER=""; zle reset-prompt }'
zpty -w shell 'zle -N tell; bindkey "^X" tell; bindkey -r "^I"; print rea""dy'
read_until $'ready\r'

failures=0
# expect LINE COMPLETED: what the line becomes by one completion.
expect() {
  zpty -n -w shell "$1"$'\x18'
  read_until ' LINE>'
  if [[ $reply != "$2" ]]; then
    print -r "vornctl in zsh: \"$1\" became \"$reply\" instead of \"$2\""
    failures=1
  fi
}

expect 'vornctl pro' 'vornctl profiles '
expect 'vornctl profiles exp' 'vornctl profiles export '
expect 'vornctl --json --timeout 5 assign --profile 2 1 keym' 'vornctl --json --timeout 5 assign --profile 2 1 keymap '
expect 'vornctl assign 1 key ct' 'vornctl assign 1 key ctrl+'
expect 'vornctl assign 1 key ctrl+sh' 'vornctl assign 1 key ctrl+shift+'
expect 'vornctl get keym' 'vornctl get Keymap'
expect 'vornctl macros record 1 --app' 'vornctl macros record 1 --append '
expect 'vornctl profiles import M' 'vornctl profiles import Mine.SkarnProfile '
expect 'vornctl profiles export --all A' 'vornctl profiles export --all All.SkarnProfiles/'
expect 'vornctl assign 1 launch oth' 'vornctl assign 1 launch other.txt '
expect 'vornctl profiles switch wo' 'vornctl profiles switch Work\ \&\ Play '
expect 'vornctl profiles switch Work\ ' 'vornctl profiles switch Work\ \&\ Play '
expect 'vornctl profiles switch It' "vornctl profiles switch It\\'s "
zpty -d shell
exit $failures
