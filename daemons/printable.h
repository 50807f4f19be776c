// Text from outside, made safe for a terminal.
#ifndef DAEMONS_PRINTABLE_H
#define DAEMONS_PRINTABLE_H

#include <string>
#include <string_view>

namespace daemons
{

// What comes from a caller must not inject terminal escapes.
inline std::string printable(std::string_view text)
{
    std::string out;
    for (const char c : text)
        out += c >= ' ' && c <= '~' ? c : '?';
    return out;
}

} // namespace daemons

#endif
