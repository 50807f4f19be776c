// Characters of UTF-8 text that may be invalid.
#ifndef CMIFCTL_OUTPUT_UTF8_H
#define CMIFCTL_OUTPUT_UTF8_H

#include <cstddef>
#include <string_view>

namespace cmifctl
{

struct Character {
    char32_t code;
    std::size_t length; // in bytes
    bool valid;         // false: one byte that isn't part of a character; its code is meaningless
};

// Of a text that isn't empty.
Character first_character(std::string_view text);

} // namespace cmifctl

#endif
