# shellcheck shell=bash
# Completes the options and files of hct-editor in bash. It needs no other file of bash-completion.

# Folders, and the files whose names end so.
__hct_editor_files() {
    local name
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$2")
    while read -r name; do
        [[ -d $name || ${name,,} != *"$1" ]] || COMPREPLY+=("$name")
    done < <(compgen -f -- "$2")
}

_hct_editor() {
    local word=$2 previous=$3
    COMPREPLY=()

    # --model=7200 comes as three words.
    [[ $word != = ]] || word=''
    [[ $previous != = ]] || previous=${COMP_WORDS[COMP_CWORD - 2]}
    [[ ${COMP_WORDS[COMP_CWORD]} != = ]] || previous=${COMP_WORDS[COMP_CWORD - 1]}
    case $previous in
    --pdf) __hct_editor_files .pdf "$word"; return ;;
    --model) mapfile -t COMPREPLY < <(compgen -W '7200 7300' -- "$word"); return ;;
    --title) return ;;
    esac

    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--pdf --model --title --help --version' -- "$word")
        return
    fi
    __hct_editor_files .hct "$word"
}

complete -F _hct_editor hct-editor
