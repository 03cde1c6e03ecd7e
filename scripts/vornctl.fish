# Completion of vornctl for fish; installed as share/fish/vendor_completions.d/vornctl.fish. What may stand where is told
# by "vornctl complete".

function __vornctl_offers
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l program $words[1]
    set -e words[1]
    for line in ($program --timeout 1 complete -- $words "$current" 2>/dev/null)
        set -l columns (string split \t -- $line)
        if test -n "$columns[1]"
            printf '%s\n' $line
        else if test "$columns[2]" = folders
            __fish_complete_directories "$current" ''
        else if test -n "$columns[3]"
            __fish_complete_suffix ".$columns[3]"
        else
            __fish_complete_path "$current" ''
        end
    end
end

complete -c vornctl -f -k -a '(__vornctl_offers)'
