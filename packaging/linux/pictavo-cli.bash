# Completion of pictavo-cli for bash: commands, options, and the values of those that take one of a few; all else is
# the name of a file or folder.

_pictavo_cli_options() {
    case $1 in
        info | list | check | png-info) echo --json ;;
        export) echo -o --format --pictures --hex-names --zero-names --converter --overwrite ;;
        convert) echo --type --number --converter --overwrite ;;
        patch) echo -o --picture --folder --bits --compress --png --hex-names --zero-names --converter --overwrite ;;
        apply) echo -o --force --overwrite ;;
        backup-pit | carve) echo -o --overwrite ;;
        rebuild-pit) echo --from -o --hex-names --zero-names --overwrite ;;
        extract-patch | extract-gpn) echo -o --hex-names --zero-names --overwrite ;;
        *) echo --version ;;
    esac
    echo -h --help
}

_pictavo_cli_folders() {
    compopt +o default +o bashdefault -o dirnames
}

# The value of option $2 of command $1. Fails where the word at hand is no value of an option.
_pictavo_cli_value() {
    case $1:$2 in
        export:--format) COMPREPLY=($(compgen -W 'bmp gpf gpf2 png' -- "$3")) ;;
        convert:--type) COMPREPLY=($(compgen -W '01 05 08 0A 85 88 8A' -- "$3")) ;;
        patch:--bits) COMPREPLY=($(compgen -W '1 8 16 24' -- "$3")) ;;
        patch:-o | apply:-o) ;;
        *:-o | *:--folder | *:--from) _pictavo_cli_folders ;;
        *:--converter | *:--png | *:--picture | *:--pictures | *:--number) ;;
        *) return 1 ;;
    esac
}

_pictavo_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --) return ;; # names of files only
            -*) ;;
            *) command=${command:-${COMP_WORDS[i]}} ;;
        esac
    done
    if [ -n "$command" ] && _pictavo_cli_value "$command" "$before" "$word"; then return; fi
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "$(_pictavo_cli_options "$command")" -- "$word"))
    elif [ -z "$command" ]; then
        COMPREPLY=($(compgen -W 'info list export convert patch check apply backup-pit rebuild-pit extract-patch
            extract-gpn carve png-info' -- "$word"))
    elif [ "$command" = carve ] && [ "$before" = carve ]; then
        COMPREPLY=($(compgen -W 'gif png xml' -- "$word"))
    fi
}

# What the function leaves open is completed as the name of a file.
complete -o bashdefault -o default -F _pictavo_cli pictavo-cli
