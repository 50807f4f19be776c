// The text of a saved configuration, for people to read and edit.
//
// Each line is key=value; the lines are sorted by key. Empty lines and lines that begin with # are
// comments, and spaces and tabs around the key and the value are ignored. In both, \n, \r and \t
// are the control characters, \\ is a backslash, and \xHH is any other byte: a control character,
// an equals sign or a leading # in a key, a space at either end. A NUL is not allowed. If a key
// occurs twice, its last value counts.
#ifndef PLATFORM_SAVED_TEXT_H
#define PLATFORM_SAVED_TEXT_H

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace host_store
{

using Entries = std::vector<std::pair<std::string, std::string>>;

struct Saved {
    Entries entries;   // all that can be read
    std::string error; // the first line that can't, "line 7: ..."; empty if there is none
};

std::string to_text(const Entries &entries);
Saved from_text(std::string_view text);

} // namespace host_store

#endif
