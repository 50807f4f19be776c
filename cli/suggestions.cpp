#include "suggestions.h"

#include <algorithm>
#include <numeric>

namespace cli
{
namespace
{

// The Levenshtein distance, row by row.
std::size_t distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row[b.size()];
}

// 0 for a part of the candidate, however short.
std::size_t difference(std::string_view word, std::string_view candidate)
{
    const bool part = word.size() > 1 && candidate.find(word) != std::string_view::npos;
    return part ? 0 : distance(word, candidate);
}

} // namespace

std::vector<std::string> suggestions(std::string_view word,
                                     const std::vector<std::string> &candidates)
{
    // More than two letters differ, or more than half of a short word.
    std::size_t least = std::min<std::size_t>(3, word.size() / 2 + 1);
    std::vector<std::string> similar;
    for (const std::string &candidate : candidates) {
        const std::size_t different = difference(word, candidate);
        if (different < least)
            similar.clear();
        if (different < least || (different == least && !similar.empty()))
            similar.push_back(candidate);
        least = std::min(least, different);
    }
    return similar;
}

} // namespace cli
