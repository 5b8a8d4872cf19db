# shellcheck shell=bash
# Completes the commands, options, files and ports of hctctl in bash. It needs no other file of
# bash-completion.

# The words of the command without its options, at most two: "programme read".
__hctctl_command() {
    local i words=()
    for ((i = 1; i < COMP_CWORD && ${#words[@]} < 2; i++)); do
        case ${COMP_WORDS[i]} in
        --port | --line | --station | --identification | --modem | --wait | --trace | --at | --if-off-by | --model)
            [[ ${COMP_WORDS[i + 1]:-} != = ]] || ((i++))
            ((i++)) ;;
        -*) ;;
        *) words+=("${COMP_WORDS[i]}") ;;
        esac
    done
    echo "${words[*]}"
}

# The words among which to choose.
__hctctl_choose() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# Folders, and the files whose names end so; all files without an ending.
__hctctl_files() {
    local name
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$2")
    while read -r name; do
        [[ -d $name || ${name,,} != *"$1" ]] || COMPREPLY+=("$name")
    done < <(compgen -f -- "$2")
}

# The names of adapters that stay the same in whatever order they are connected.
__hctctl_links=/dev/serial/by-id

# COM numbers and devices, as hctctl lists them below the headings of its table, and links to devices.
__hctctl_ports() {
    local port device rest ports
    mapfile -t ports < <(compgen -G "$__hctctl_links/*")
    while read -r port device rest; do
        ports+=("$port" "$device")
    done < <("$1" ports 2>/dev/null | tail -n +2)
    __hctctl_choose "${ports[*]}" "$2"
}

# Outputs to be switched, after the command and the output whose "=" has been typed.
__hctctl_outputs() {
    local outputs='1=on 1=off 2=on 2=off 3=on 3=off'
    case $2:$3 in
    outputs\ auto:*) ;;
    *:?*) __hctctl_choose 'on off' "$1" ;;
    outputs:*) __hctctl_choose "auto $outputs" "$1" ;;
    *) __hctctl_choose "$outputs" "$1" ;;
    esac
}

_hctctl() {
    local word=$2 previous=$3 options command output=
    local common='--port --line --station --identification --modem --wait --json --trace --quiet --help --version'
    command=$(__hctctl_command)
    COMPREPLY=()

    # --port=COM1 and 1=on come as three words.
    [[ $word != = ]] || word=''
    [[ $previous != = ]] || output=${COMP_WORDS[COMP_CWORD - 2]}
    [[ ${COMP_WORDS[COMP_CWORD]} != = ]] || output=${COMP_WORDS[COMP_CWORD - 1]}
    previous=${output:-$previous}
    case $previous in
    --port) __hctctl_ports "$1" "$word"; return ;;
    --line) __hctctl_choose '1200 2400 4800 9600 19200 38400 57600 115200' "$word"; return ;;
    --trace) __hctctl_files '' "$word"; return ;;
    --model) __hctctl_choose '7200 7300' "$word"; return ;;
    --station | --identification | --modem | --wait | --at | --if-off-by) return ;;
    esac

    if [[ $word == -* ]]; then
        case $command in
        status) options=--watch ;;
        'clock set') options='--at --if-off-by' ;;
        'programme write') options=--no-verify ;;
        'programme check' | 'programme show' | 'programme diff') options=--model ;;
        'firmware send') options='--reset --yes' ;;
        esac
        __hctctl_choose "${options:-} $common" "$word"
        return
    fi
    case $command in
    '') __hctctl_choose 'status clock outputs programme firmware ports' "$word" ;;
    clock) __hctctl_choose set "$word" ;;
    programme) __hctctl_choose 'read write verify check show diff' "$word" ;;
    firmware) __hctctl_choose send "$word" ;;
    ports) __hctctl_choose 'set unset' "$word" ;;
    'ports set' | 'ports unset') [[ $previous != *set ]] || __hctctl_choose "$(echo COM{1..16})" "$word" ;;
    outputs*) __hctctl_outputs "$word" "$command" "$output" ;;
    programme\ *) __hctctl_files .hct "$word" ;;
    'firmware send') __hctctl_files .hex "$word" ;;
    esac
}

complete -F _hctctl hctctl
