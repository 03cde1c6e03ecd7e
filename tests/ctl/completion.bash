#!/usr/bin/env bash
# What the completion of vornctl offers; $1 is its script. Needs no engine.
# shellcheck source=scripts/vornctl.bash
source "$1"
failures=0

# The offers for a command line, whose last word is the one to complete, against the first argument.
expect() {
  local expected=$1
  shift
  COMP_WORDS=(vornctl "$@")
  COMP_CWORD=$#
  _vornctl
  if [[ ${COMPREPLY[*]} != "$expected" ]]; then
    echo "vornctl $*: expected \"$expected\", got \"${COMPREPLY[*]}\""
    failures=1
  fi
}

# Stands in for an engine with three changes, two profiles and two mice.
vornctl() {
  case $* in
    '--no-start --timeout 1 history list') printf '%s    2026-01-02 10:00:00  vornctl\n' 12 9 1 ;;
    '--no-start --timeout 1 mice list --json') echo '[{"id":"usb-1","name":"A"},{"id":"virtual","name":"V"}]' ;;
    '--no-start --timeout 1 profiles list') printf '* 1  Work\n  2  Games\n' ;;
  esac
}

# A folder with a folder and two files.
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
mkdir "$folder/All.SkarnProfiles"
touch "$folder/Mine.SkarnProfile" "$folder/other.txt"
cd "$folder" || exit 1

expect 'status profiles get set macros assign assignments keys undo redo history backups monitor mice doctor device' ''
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
expect '--append' --a
expect '--append' macros export --a
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
expect '--repeat --release' --re
expect 'DPIX DPIY' get DPI
expect '' monitor ''
expect 'record rename' macros re
expect '--append' macros record 1 --app
expect '' macros record --seconds ''
exit "$failures"
