// What a mistyped word may have been meant for.
#ifndef CMIFCTL_CLI_SUGGESTIONS_H
#define CMIFCTL_CLI_SUGGESTIONS_H

#include <string>
#include <string_view>
#include <vector>

namespace cmifctl
{

// The candidates that contain `word` or differ from it in at most two letters.
std::vector<std::string> suggestions(std::string_view word,
                                     const std::vector<std::string> &candidates);

} // namespace cmifctl

#endif
