// What a mistyped word may have been meant for.
#ifndef CLI_SUGGESTIONS_H
#define CLI_SUGGESTIONS_H

#include <string>
#include <string_view>
#include <vector>

namespace cli
{

// The candidates that contain `word`; without such, those that differ from it the least, in at most
// two letters.
std::vector<std::string> suggestions(std::string_view word,
                                     const std::vector<std::string> &candidates);

} // namespace cli

#endif
