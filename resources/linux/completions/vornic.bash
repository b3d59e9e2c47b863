# shellcheck shell=bash
# Completes vornic's commands, options and boards in bash. What there is, the program says itself.

_vornic() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == -* ]] || { command=$word; break; }
    done
    local words
    case $previous in
    --board | export | stroke | render-board) words=$(vornic boards 2>/dev/null | cut -d' ' -f1) ;;
    board) words="next previous $(vornic boards 2>/dev/null | cut -d' ' -f1)" ;;
    autostart) words='enable disable' ;;
    --placement) words='close desk' ;;
    --output) words='auto headphones speakers' ;;
    --room) words='desk dry studio wood' ;;
    --out | --keys | --snapshot | --packs | import | slice)
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    *)
        # The first column of the help: options start with a dash, commands with a letter.
        words=$(vornic ${command:+"$command"} --help 2>/dev/null |
            sed -nE 's/^  (-[^ ,]+,)?(--?[a-z-]+|[a-z-]+)( .*)?$/\2/p')
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [[ -n $command || ${#COMPREPLY[@]} -gt 0 ]] ||
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -o filenames -F _vornic vornic
