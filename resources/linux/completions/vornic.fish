# Completes vornic's commands, options and boards in fish. What there is, the program says itself.

function __vornic_words
    set -l command (commandline -opc)[2..]
    set -l first (string match -v -- '-*' $command)[1]
    vornic $first --help 2>/dev/null |
        string replace -rf '^  (?:-[^ ,]+,)?(--?[a-z-]+|[a-z-]+)(?: .*)?$' '$1'
end

function __vornic_boards
    vornic boards 2>/dev/null | string split -f1 ' '
end

complete -c vornic -a '(__vornic_words)'
complete -c vornic -n '__fish_seen_subcommand_from board' -a 'next previous (__vornic_boards)'
complete -c vornic -n '__fish_seen_subcommand_from export stroke render-board' -a '(__vornic_boards)'
complete -c vornic -n '__fish_seen_subcommand_from autostart' -a 'enable disable'
complete -c vornic -l board -x -a '(__vornic_boards)'
complete -c vornic -l placement -x -a 'close desk'
complete -c vornic -l output -x -a 'auto headphones speakers'
complete -c vornic -l room -x -a 'desk dry studio wood'
