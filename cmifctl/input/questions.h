// What the user is asked for: secrets, and confirmation.
#ifndef CMIFCTL_INPUT_QUESTIONS_H
#define CMIFCTL_INPUT_QUESTIONS_H

#include "cmifctl/context.h"

#include <string>
#include <vector>

namespace cmifctl
{

struct Question {
    const char *label;
    bool twice = false; // for a new secret: a typo would lock the user out
};

// The answers, in order: typed at the terminal without echo, or read from standard input, one line
// each, if `from_input`. Fails with exit 2 when there is no terminal or input ends.
std::vector<std::string> ask_secrets(const std::vector<Question> &questions, bool from_input);

// Returns when --yes was given or the user agrees; fails otherwise.
void confirm(const Context &context, const std::string &consequence);

} // namespace cmifctl

#endif
