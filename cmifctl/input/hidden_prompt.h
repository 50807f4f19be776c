// A question whose answer is typed without echo.
#ifndef CMIFCTL_INPUT_HIDDEN_PROMPT_H
#define CMIFCTL_INPUT_HIDDEN_PROMPT_H

#include <string>

namespace cmifctl
{

// Blocks until a line is typed. Ctrl-C throws Interrupted; Ctrl-Z takes effect after the answer.
std::string ask_hidden(int terminal, const std::string &prompt);

// Throws a Failure when the terminal can't be written.
void write_to_terminal(int terminal, const std::string &text);

} // namespace cmifctl

#endif
