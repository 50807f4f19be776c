// Text from outside, made fit for a terminal.
#ifndef DAEMONS_PRINTABLE_H
#define DAEMONS_PRINTABLE_H

#include <string>
#include <string_view>

namespace sim
{

// What comes from a caller must not play tricks on the reader's terminal.
inline std::string printable(std::string_view text)
{
    std::string out;
    for (const char c : text)
        out += c >= ' ' && c <= '~' ? c : '?';
    return out;
}

} // namespace sim

#endif
