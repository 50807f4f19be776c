// Standard output and standard error of the tool.
#ifndef CMIFCTL_OUTPUT_TERMINAL_H
#define CMIFCTL_OUTPUT_TERMINAL_H

#include "format.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace cmifctl
{

// Standard output could not be written.
struct OutputError {
    int error; // errno
};

// Writes to standard output and flushes; throws OutputError.
void print(const std::string &text);

// A note on standard error.
void note(const std::string &text);

// A line of the library, on standard error.
void show_trace_line(std::string_view line);

// A progress line on standard error that replaces the one before; on a terminal only.
void show_progress(const std::string &text);
void clear_progress();

// Columns of standard output; 0 when it isn't a terminal and COLUMNS isn't set.
std::size_t output_columns();
bool output_in_colour(Colour colour);

} // namespace cmifctl

#endif
