// Text from outside, made safe for a terminal and fitted to its columns.
#ifndef CMIFCTL_OUTPUT_TERMINAL_TEXT_H
#define CMIFCTL_OUTPUT_TERMINAL_TEXT_H

#include <string>
#include <string_view>

namespace cmifctl
{

enum class Lines { joined, kept };

// Control characters, direction marks and invalid UTF-8 become visible escapes, so that the text
// can't inject terminal sequences. A line end becomes a space, or stays.
std::string escape_controls(std::string_view text, Lines lines = Lines::joined);

// The same on one line from which the text can be had back: a line end is \n, a backslash two.
std::string escape_line(std::string_view text);

// Invisible, or able to reorder or overwrite the text around it.
bool harmful(char32_t code);

// Columns on a terminal.
std::size_t width(std::string_view text);

// At most `columns` wide; ends in "..." when truncated.
std::string truncated(std::string_view text, std::size_t columns);

std::string padded(std::string_view text, std::size_t columns);

} // namespace cmifctl

#endif
