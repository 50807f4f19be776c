// Words that an argument may be, and the numbers that they stand for.
#ifndef CLI_CHOICES_H
#define CLI_CHOICES_H

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cli
{

struct Choice {
    int code;
    const char *name;
    const char *word = ""; // accepted for the name
    const char *text = ""; // for people
};
using Choices = std::span<const Choice>;

// The code of a name, a word, or a code of the table written in digits.
std::optional<int> code_of(Choices choices, std::string_view text);

// "auto, 2g, 3g, 4g"
std::string list_of(Choices choices);

} // namespace cli

#endif
