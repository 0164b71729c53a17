# Completion of zorvd for bash.

_zorvd() {
    local current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
    COMPREPLY=()
    if [[ "$previous" == --config ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "--config --accept-empty --help --version" -- "$current")
    fi
}

complete -F _zorvd zorvd
