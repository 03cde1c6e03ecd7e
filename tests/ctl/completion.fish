#!/usr/bin/env fish
# What the completion of vornctl offers in fish; $argv[1] is its script, $argv[2] the folder of vornctl. Needs no engine.
source $argv[1]
set -g folder (mktemp -d)
set -gx VORNCTL (realpath $argv[2])/vornctl
set -gx DBUS_SESSION_BUS_ADDRESS disabled:
mkdir -p $folder/bin $folder/files/All.SkarnProfiles
touch $folder/files/Mine.SkarnProfile $folder/files/other.txt
ln -s (realpath (status dirname))/completion_vornctl.sh $folder/bin/vornctl
set -gx PATH $folder/bin $PATH
cd $folder/files
set -g failures 0

# The offers for a command line, without what is said of them, against the first argument.
function expect
    set -l offers (complete -C "vornctl $argv[2]" | string replace -r '\t.*' '' | string join ' ')
    if test "$offers" != "$argv[1]"
        echo "vornctl $argv[2]: expected \"$argv[1]\", got \"$offers\""
        set failures 1
    end
end

expect 'status profiles get set macros assign assignments keys undo redo history backups monitor mice doctor focus device' ''
expect 'list go' 'history '
expect '12 9 1 0' 'history go '
expect 'list restore' 'backups '
expect 'usb-1 virtual' 'mice use '
expect --all 'profiles export --al'
expect '' 'profiles list --al'
expect '' 'undo '
expect 'Work Games' 'profiles export '
# Fish offers other files behind those that are meant.
expect 'Mine.SkarnProfile All.SkarnProfiles/ other.txt' 'profiles import '
expect All.SkarnProfiles/ 'profiles export --all '
expect profiles pro
expect 'key keymap' '--json --timeout 5 assign --profile 2 1 ke'
expect '1 2 3 4 5 6 7 8 cycle' 'assign 1 keymap '
expect ctrl+ 'assign 1 key ct'
expect ctrl+shift+ 'assign 1 key ctrl+sh'
expect 'battery charging none usual' 'device charging '
expect 'Work & Play' 'profiles switch Wo'
expect other.txt 'assign 1 launch oth'
expect '' 'macros record --seconds '
test "$(complete -C 'vornctl und')" = undo\t'take the last change of the settings back'
or begin
    echo 'what a command does is not said'
    set failures 1
end
cd /
rm -r $folder
exit $failures
