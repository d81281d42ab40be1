# fish completion for hearthmake. The command itself knows what may stand where.

function __hearthmake_complete
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    set -l program $words[1]
    type -q -- $program; or set program hearthmake
    # fish finds what fits the word itself, in any case and with its quotes; only options say more by
    # how they begin.
    set -l begun ''
    string match -q -- '-*' $current; and set begun $current
    set -l answer (command $program __complete words $words[2..-1] "$begun" 2>/dev/null)
    set -q answer[2]; and printf '%s\n' $answer[2..-1]
    set -l option (string match -r -- '^--[^=]*=' $current)
    set -l path (string replace -r -- '^--[^=]*=' '' $current)
    switch "$answer[1]"
        case files
            printf "$option%s\n" (__fish_complete_path $path)
        case folders
            printf "$option%s\n" (__fish_complete_directories $path '')
    end
end

complete -c hearthmake -f -a '(__hearthmake_complete)'
