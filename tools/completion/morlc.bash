# SPDX-License-Identifier: MIT
# Completion of morlc for bash.

# The names of the nodes in the directory that the command line selects.
_morlc_nodes() {
    local directory=. i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        -C | --directory) directory=${COMP_WORDS[i + 1]} ;;
        esac
    done
    "${COMP_WORDS[0]}" -C "$directory" --list 2>/dev/null | sed -n 's/^\([^ ][^ ]*\)  .*/\1/p'
}

_morlc_targets()
{
    "${COMP_WORDS[0]}" --help 2>/dev/null | sed -n 's/.*TARGET:{\(.*\)}.*/\1/p' | tr , ' '
}

_morlc() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local common="--help --version --directory --diagnostics --all --verbose --output"
    COMPREPLY=()
    case $previous in
    -C | --directory)
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        return
        ;;
    -o | --output | --semantics-in | --semantics-out | --ninja | --depfile)
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    -t | --target)
        mapfile -t COMPREPLY < <(compgen -W "$(_morlc_targets)" -- "$word")
        return
        ;;
    -s | --stage)
        mapfile -t COMPREPLY < <(compgen -W "vertex fragment" -- "$word")
        return
        ;;
    --diagnostics)
        mapfile -t COMPREPLY < <(compgen -W "text json" -- "$word")
        return
        ;;
    --graph)
        mapfile -t COMPREPLY < <(compgen -W "dot" -- "$word")
        return
        ;;
    --vertex | --fragment)
        # Only the last name of a list is completed.
        local before=""
        [[ $word == *,* ]] && before=${word%,*},
        mapfile -t COMPREPLY < <(compgen -P "$before" -W "$(_morlc_nodes)" -- "${word##*,}")
        return
        ;;
    -W)
        mapfile -t COMPREPLY < <(compgen -W "names macros lost-code stages targets verdict \
            no-names no-macros no-lost-code no-stages no-targets no-verdict" -- "$word")
        return
        ;;
    -D | --define | --sampler | -j | --jobs | --shader | --launcher)
        return
        ;;
    esac
    if [[ ${COMP_WORDS[1]} == build && COMP_CWORD -gt 1 ]]; then
        if [[ $word == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$common --jobs --shader --no-index --index \
                --ninja --launcher --depfile --quiet" -- "$word")
        else
            mapfile -t COMPREPLY < <(compgen -f -X '!*.json' -- "$word"; compgen -d -- "$word")
        fi
    elif [[ ${COMP_WORDS[1]} == check && COMP_CWORD -gt 1 ]]; then
        if [[ $word == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$common --target --stage --vertex --fragment --define \
                --sampler --shader -W --werror --show-generated --jobs --quiet" -- "$word")
        elif [[ " ${COMP_WORDS[*]} " == *" -s "* || " ${COMP_WORDS[*]} " == *" --stage "* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$(_morlc_nodes)" -- "$word")
        else
            mapfile -t COMPREPLY < <(compgen -f -X '!*.json' -- "$word"; compgen -d -- "$word")
        fi
    elif [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$common --target --stage --vertex --fragment --define \
            --sampler --semantics-in --semantics-out --list --graph" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$(_morlc_nodes)" -- "$word")
        [[ COMP_CWORD -eq 1 && build == "$word"* ]] && COMPREPLY+=(build)
        [[ COMP_CWORD -eq 1 && check == "$word"* ]] && COMPREPLY+=(check)
    fi
}

complete -F _morlc morlc
