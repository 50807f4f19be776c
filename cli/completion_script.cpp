#include "completion.h"

namespace cli
{
namespace
{

// PROGRAM stands for the program's name. Bash splits words at = and replaces only the part after
// it; descriptions are for lists, not for what is inserted.
constexpr const char *bash_script = R"(# bash completion for PROGRAM
_PROGRAM() {
    local words=() values=() texts=() part joined='' value text i width=0
    for part in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        if [[ ${#words[@]} -gt 0 && ( $joined || $part == = ) ]]; then
            words[-1]+=$part
        else
            words+=("$part")
        fi
        if [[ $part == = ]]; then joined=1; else joined=''; fi
    done
    while IFS=$'\t' read -r value text; do
        [[ ${COMP_WORDS[COMP_CWORD]} == "${words[-1]}" ]] || value=${value#*=}
        values+=("$value") texts+=("$text")
        ((${#value} <= width)) || width=${#value}
    done < <(PROGRAM complete -- "${words[@]}" 2>/dev/null)
    COMPREPLY=("${values[@]}")
    case $COMP_TYPE in
    33 | 63 | 64) # a list of several
        ((${#values[@]} > 1)) || return
        for i in "${!values[@]}"; do
            [[ -z ${texts[i]} ]] || printf -v 'COMPREPLY[i]' '%-*s  (%s)' "$width" "${values[i]}" "${texts[i]}"
        done
        ;;
    esac
    [[ " ${words[*]} " != *' -- '* ]] || compopt -o default
}
complete -F _PROGRAM PROGRAM
)";

constexpr const char *zsh_script = R"(#compdef PROGRAM
_PROGRAM() {
    local value text
    local -a candidates
    while IFS=$'\t' read -r value text; do
        candidates+=("$value${text:+:$text}")
    done < <(PROGRAM complete -- "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)
    if (( $#candidates )); then
        _describe -V PROGRAM candidates
    elif (( ${words[(I)--]} )); then
        _default
    fi
}
compdef _PROGRAM PROGRAM
)";

} // namespace

std::string completion_script(const Program &program, const std::string &shell)
{
    constexpr std::string_view placeholder = "PROGRAM";
    std::string script = shell == "zsh" ? zsh_script : bash_script;
    for (std::size_t at = script.find(placeholder); at != std::string::npos;
         at = script.find(placeholder, at))
        script.replace(at, placeholder.size(), program.name);
    return script;
}

} // namespace cli
