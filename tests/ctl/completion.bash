#!/usr/bin/env bash
# What the completion of vornctl offers in bash; $1 is its script, $2 the folder of vornctl. Needs no engine.
# shellcheck source=scripts/vornctl.bash
source "$1"
failures=0

# The offers for a command line, whose last word is the one to complete, against the first argument.
expect() {
  local expected=$1
  shift
  COMP_WORDS=(vornctl "$@")
  COMP_CWORD=$#
  _vornctl vornctl
  if [[ ${COMPREPLY[*]} != "$expected" ]]; then
    echo "vornctl $*: expected \"$expected\", got \"${COMPREPLY[*]}\""
    failures=1
  fi
}

# A folder with a folder and two files.
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
mkdir -p "$folder/bin" "$folder/files/All.SkarnProfiles"
touch "$folder/files/Mine.SkarnProfile" "$folder/files/other.txt"
ln -s "$(realpath "$(dirname "$0")")/completion_vornctl.sh" "$folder/bin/vornctl"
VORNCTL=$(realpath "$2")/vornctl
export VORNCTL PATH=$folder/bin:$PATH DBUS_SESSION_BUS_ADDRESS=disabled:
cd "$folder/files" || exit 1

expect 'status profiles get set macros assign assignments keys undo redo history backups monitor mice doctor focus device' ''
expect 'list go' history ''
expect '12 9 1 0' history go ''
expect '12 1' history go 1
expect '' history list ''
expect 'list restore' backups ''
expect 'list use show teach forget resolution' mice ''
expect 'usb-1 virtual' mice use ''
expect 'keymap' mice teach ke
expect 'stage-up stage-down' mice forget st
expect '--all' profiles export --al
expect '--all' profiles import --json --al
expect '--append --all' --a
expect '' macros export --a
expect '' profiles list --al
expect '' undo ''
expect 'Work Games' profiles export ''
expect 'Mine.SkarnProfile All.SkarnProfiles' profiles export Work ''
expect 'Mine.SkarnProfile All.SkarnProfiles' profiles import ''
expect 'All.SkarnProfiles' profiles export --all ''
expect 'All.SkarnProfiles' profiles --all import A
expect '' profiles export --all All.SkarnProfiles ''
expect 'profiles' pro
expect 'export' profiles e
expect 'key keymap' assign 1 ke
expect 'key keymap' --json --timeout 5 assign --profile 2 1 ke
expect '1 2 3 4 5 6 7 8 cycle' assign 1 keymap ''
expect 'up down' assign 1 stage ''
expect 'Control Command' assign 1 key A --with Co
expect 'ctrl+' assign 1 key ct
expect 'ctrl+shift+' assign 1 key ctrl+sh
expect 'alt+cmd+' device type alt+cm
expect '3' assignments --keymap 3
expect '--list' get --li
expect 'held' assign 1 macro 1 --repeat h
expect 'battery charging none usual' device charging ''
expect 'stage-up stage-down' device press stage
expect '--release --repeat' --re
expect 'DPIX DPIY' get DPI
expect '' monitor ''
expect 'record rename' macros re
expect '--append' macros record 1 --app
expect '' macros record --seconds ''
expect "Default Work\\ \\&\\ Play It\\'s" profiles switch ''
expect 'Work\ \&\ Play' profiles switch wo
expect 'Work\ \&\ Play' profiles switch 'Work\ '
expect 'Wheel Wheel-Up Wheel-Down' device press wh
expect other.txt assign 1 launch oth
exit "$failures"
