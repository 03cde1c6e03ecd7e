# Completion of vornctl for bash; installed as share/bash-completion/completions/vornctl.

# The names of profiles or macros ($1) of the running engine, one a line.
_vornctl_names() {
  vornctl --no-start --timeout 1 "$1" list 2>/dev/null | sed -E 's/^[* ] +[0-9]+  //'
}

# Offers lines of standard input that begin with the current word; a name with blanks is quoted.
_vornctl_offer() {
  local line
  while IFS= read -r line; do
    [[ -n $line && $line == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
  done
}

_vornctl_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

_vornctl_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -X "!*.$1" -- "$cur"; compgen -d -- "$cur")
}

# Keys, also behind the modifiers of a chord that stand there already.
_vornctl_key() {
  local before=''
  [[ $cur == ?*+* ]] && before=${cur%+*}+
  _vornctl_offer < <({ printf '%s\n' ctrl+ shift+ alt+ cmd+; vornctl keys 2>/dev/null; } |
    awk -v before="$before" '{ print before $0 }')
  [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == *+ ]] && compopt -o nospace 2>/dev/null
}

# The settings of a profile, in the order of their reference.
_vornctl_keys='ProfileName Keys/ Buttons/ Keymap/ KeymapID KeymapNames Stages StageValue DPIX DPIY IndependentXYOn
  SensitivityOSDOn MasterSensitivityOn Sensitivity AccelerationOn Acceleration PollingRate LEDColors LEDEffects ScrollLED
  BrightnessKBNormal BrightnessNormal BrightnessBattery PowerSaver BatteryCriticalLevel AppInfo/ AutoSwitchOn
  ProfileOSDOn'

# The controls in the order of their numbers.
_vornctl_controls='Tab Q W E R Caps-Lock A S D F Left-Shift Z X C Space Left-Alt wheel wheel-up wheel-down Up-Arrow
  Up-Right Right-Arrow Down-Right Down-Arrow Down-Left Left-Arrow Up-Left'

_vornctl_assign() {
  case $# in
    1) _vornctl_words "$_vornctl_controls" ;;
    2)
      _vornctl_words 'default disable key macro profile keymap button scroll stage forward backward sensitivity launch'
      ;;
    3)
      case $2 in
        key) _vornctl_key ;;
        macro | profile) _vornctl_offer < <(_vornctl_names "${2}s") ;;
        keymap) _vornctl_words '1 2 3 4 5 6 7 8 cycle' ;;
        button) _vornctl_words '1 2 3 4 5 6 7 8 double' ;;
        scroll | stage) _vornctl_words 'up down' ;;
        sensitivity) _vornctl_words 'on-the-fly temporary' ;;
        launch)
          compopt -o filenames 2>/dev/null
          mapfile -t COMPREPLY < <(compgen -f -- "$cur")
          ;;
      esac
      ;;
  esac
}

_vornctl_folders() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -d -- "$cur")
}

_vornctl_records() {
  local kind=$1 extension=$2
  shift 2
  case $1$isAll:$# in
    switch:2 | copy:2 | rename:2 | delete:2 | move:2 | compare:2 | compare:3 | export:2 | show:2 | record:2)
      _vornctl_offer < <(_vornctl_names "$kind")
      ;;
    move:3) _vornctl_words '1 2 3 4 5' ;;
    export--all:2 | import--all:2) _vornctl_folders ;;
    import:2) _vornctl_files "$extension" ;;
    export:3) _vornctl_files "$extension" ;;
  esac
}

_vornctl_device() {
  case $1:$# in
    plug:2) _vornctl_words 'wired wireless' ;;
    type:2) _vornctl_key ;;
    press:2 | release:2 | click:2) _vornctl_words "$_vornctl_controls keymap stage-up stage-down" ;;
    charging:2) _vornctl_words 'battery charging none usual' ;;
  esac
}

_vornctl_mice() {
  case $1:$# in
    use:2 | show:2)
      _vornctl_offer < <(vornctl --no-start --timeout 1 mice list --json 2>/dev/null | grep -o '"id":"[^"\\]*"' |
        cut -d '"' -f 4)
      ;;
    teach:2 | forget:2) _vornctl_words "$_vornctl_controls keymap stage-up stage-down" ;;
  esac
}

_vornctl_backups() {
  [[ $1 == restore ]] && _vornctl_offer < <(vornctl --no-start --timeout 1 backups list 2>/dev/null | cut -d ' ' -f 1)
}

# The numbers of the changes, and 0 for the time before all of them.
_vornctl_changes() {
  _vornctl_offer < <(vornctl --no-start --timeout 1 history list 2>/dev/null | cut -d ' ' -f 1; echo 0)
}

_vornctl() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} index
  local isAll=''
  local -a words=()
  COMPREPLY=()
  case $previous in
    --profile)
      _vornctl_offer < <(_vornctl_names profiles)
      return
      ;;
    --repeat)
      _vornctl_words '1 2 3 4 5 6 7 8 9 10 held toggle'
      return
      ;;
    --with)
      _vornctl_words 'Control Shift Alt Command Right-Control Right-Shift Right-Alt Right-Command'
      return
      ;;
    --keymap)
      _vornctl_words '1 2 3 4 5 6 7 8'
      return
      ;;
    --timeout | --seconds) return ;;
  esac
  # The words before the cursor without options and their values.
  for ((index = 1; index < COMP_CWORD; ++index)); do
    case ${COMP_WORDS[index]} in
      --profile | --keymap | --with | --repeat | --timeout | --seconds) ((++index)) ;;
      --all) isAll=--all ;;
      --*) ;;
      *) words+=("${COMP_WORDS[index]}") ;;
    esac
  done
  words+=("$cur")
  if [[ $cur == -* ]]; then
    local options='--json --help --version --timeout --no-start --profile --keymap --list --with --repeat --switch-back
      --failing --press --release --append --new --seconds'
    [[ ${words[0]}:${words[1]} == profiles:@(export|import) ]] && options+=' --all'
    _vornctl_words "$options"
    return
  fi
  if ((${#words[@]} == 1)); then
    _vornctl_words 'status profiles get set macros assign assignments keys undo redo history backups monitor mice doctor device'
    return
  fi
  case ${words[0]}:${#words[@]} in
    profiles:2) _vornctl_words 'list switch add copy rename delete move compare export import' ;;
    macros:2) _vornctl_words 'list show record rename delete export import' ;;
    device:2) _vornctl_words 'plug unplug press release click type battery charging firmware state output' ;;
    mice:2) _vornctl_words 'list use show teach forget resolution' ;;
    mice:*) _vornctl_mice "${words[@]:1}" ;;
    history:2) _vornctl_words 'list go' ;;
    history:3) [[ ${words[1]} == go ]] && _vornctl_changes ;;
    backups:2) _vornctl_words 'list restore' ;;
    backups:3) _vornctl_backups "${words[1]}" ;;
    get:2 | set:2) _vornctl_words "$_vornctl_keys" ;;
    profiles:*) _vornctl_records profiles SkarnProfile "${words[@]:1}" ;;
    macros:*) _vornctl_records macros SkarnMacro "${words[@]:1}" ;;
    device:*) _vornctl_device "${words[@]:1}" ;;
    assign:*) _vornctl_assign "${words[@]:1}" ;;
  esac
}

complete -F _vornctl vornctl
