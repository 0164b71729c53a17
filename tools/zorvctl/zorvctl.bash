# Completion of zorvctl for bash.

# What may follow the words of the command so far: commands, arguments of a fixed choice, and options.
_zorvctl_words() {
    local publish="--text --info --time --framework --version"
    case "$*" in
        "") echo "raise clear alert alarms alarm summary suppress notifications object model component status lists \
counters log level play --version" ;;
        raise | alert) echo "--severity $publish" ;;
        clear) echo "$publish" ;;
        alarms) echo "--severity --dn --type --json --watch" ;;
        suppress) echo "on off" ;;
        notifications) echo "--follow --version --after --json" ;;
        object) echo "get set create delete tree" ;;
        "object get" | "object tree") echo "--depth --json" ;;
        model) echo "check reload" ;;
        component) echo "list start stop" ;;
        "component start" | "component stop") echo "--reason" ;;
        log) echo "system alarms publications --lines --follow" ;;
        level) echo "log trace --json" ;;
        "level log") echo "error warning notice information" ;;
        play) echo "--speed" ;;
        alarm | summary | status | lists | counters | "component list") echo "--json" ;;
    esac
}

# The value of an option; nothing where anything goes. Options that take none are not found here.
_zorvctl_value() {
    case "$1 $2" in
        *" --severity") echo "critical major minor warning indeterminate cleared" ;;
        *" --reason") echo "activate deactivate fail-over switch-over" ;;
        *" --framework") echo "yalt zorv" ;;
        "notifications --version") echo "3 2" ;;
        "raise --version" | "clear --version" | "alert --version") echo "1 2 4" ;;
        *" --socket" | *" --text" | *" --info" | *" --time" | *" --dn" | *" --type" | *" --after" | *" --depth" | \
            *" --lines" | *" --speed") ;;
        *) return 1 ;;
    esac
}

_zorvctl() {
    local current="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}"
    local index command="" choice
    for ((index = 1; index < COMP_CWORD; ++index)); do
        case "${COMP_WORDS[index]}" in
            --socket) ((++index)) ;;
            -*) ;;
            *)
                # object, model, component and level have commands of their own
                if [[ -z "$command" || "$command" =~ ^(object|model|component|level)$ ]]; then
                    command="${command:+$command }${COMP_WORDS[index]}"
                fi
                ;;
        esac
    done

    COMPREPLY=()
    if [[ "$previous" == --socket || "$command" =~ ^(play|model\ check)$ && "$current" != -* && "$previous" != -* ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif choice="$(_zorvctl_value "${command%% *}" "$previous")"; then
        mapfile -t COMPREPLY < <(compgen -W "$choice" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$(_zorvctl_words "$command") --socket --help" -- "$current")
    fi
}

complete -F _zorvctl zorvctl
