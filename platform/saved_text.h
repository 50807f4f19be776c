// The text of a saved configuration, for a person to read and edit.
//
// A line is key=value; the lines are sorted by key. Empty lines and those that begin with # are
// comments, and blanks around the key and the value don't count. In both, \n, \r and \t are the
// control characters, \\ is a backslash and \xHH any other byte: control characters, an equals sign
// or a leading # in a key, a blank at either end. No byte is 0. A key given twice has its last
// value.
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
    Entries entries;     // everything that can be read
    std::string trouble; // the first thing that can't, "line 7: ..."; empty when all is well
};

std::string to_text(const Entries &entries);
Saved from_text(std::string_view text);

} // namespace host_store

#endif
