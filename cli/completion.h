// Completion: what may follow on a command line, and the scripts by which shells ask for it.
#ifndef CLI_COMPLETION_H
#define CLI_COMPLETION_H

#include "table.h"

namespace cli
{

constexpr Choice shells[] = {{0, "bash"}, {1, "zsh"}};

constexpr Argument shell_arguments[] = {
    {Argument::Kind::required, "shell", "SHELL", "for which shell", shells},
};
constexpr Argument complete_arguments[] = {
    {Argument::Kind::rest, "words", "WORD...",
     "the words after the program's name; the last one is completed"},
};

// What may stand in place of the last word.
std::vector<Candidate> complete(const Program &program, const std::vector<std::string> &words);

// One line for each: the value, a tab, the description. Shells read it.
std::string candidates_text(const std::vector<Candidate> &candidates);

// For "bash" or "zsh": asks `PROGRAM complete -- WORD...` at each completion.
std::string completion_script(const Program &program, const std::string &shell);

} // namespace cli

#endif
