# bash completion for vantrel                                              -*- shell-script -*-

_vantrel() {
    local word=${COMP_WORDS[COMP_CWORD]} before=("${COMP_WORDS[@]:1:COMP_CWORD-1}") earlier
    COMPREPLY=()
    for earlier in "${before[@]}"; do
        # One folder is all that it takes.
        [[ $earlier == -* ]] || return
    done
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--help --version' -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -A directory -- "$word")
    fi
}
complete -F _vantrel vantrel
