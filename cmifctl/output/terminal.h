// What is asked of the person at the terminal: secrets, and whether they are sure.
#ifndef CMIFCTL_OUTPUT_TERMINAL_H
#define CMIFCTL_OUTPUT_TERMINAL_H

#include "cmifctl/context.h"

#include <string>
#include <vector>

namespace cmifctl
{

struct Question {
    const char *label;
    bool twice = false; // a typing error would lock somebody out
};

// The answers, in order: typed at the terminal without echo, or a line each of standard input when
// `from_input`. Fails with exit 2 when there is neither.
std::vector<std::string> ask_secrets(const std::vector<Question> &questions, bool from_input);

// Returns when --yes was given or the person agrees; fails otherwise.
void confirm(const Invocation &run, const std::string &consequence);

// Text for standard output, at once; throws Unwritable when it can't be written.
void print(const std::string &text);

// A note or progress, on standard error.
void note(const std::string &text);
// Progress that overwrites itself; on a terminal only.
void progress(const std::string &text);
void end_progress();

// Columns of standard output; 0 when it isn't a terminal and COLUMNS isn't set.
std::size_t output_columns();
bool output_in_colour();

} // namespace cmifctl

#endif
