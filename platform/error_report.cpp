#include "error_report.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <functional>

namespace host_store
{

namespace
{

// Keeps no lock, so that a child forked meanwhile can't inherit one that is held.
bool first_time(const std::string &line)
{
    static constinit std::array<std::atomic<std::size_t>, 64> said{};
    const std::size_t hash = std::hash<std::string>{}(line) | 1U; // 0 marks a free place
    for (auto &place : said) {
        std::size_t found = 0;
        if (place.compare_exchange_strong(found, hash))
            return true;
        if (found == hash)
            return false;
    }
    return true;
}

} // namespace

void complain(const std::string &where, const std::string &what, const std::string &remedy)
{
    const std::string line = "cmif store: " + where + ": " + what + "; " + remedy + "\n";
    if (first_time(line))
        std::fputs(line.c_str(), stderr);
}

} // namespace host_store
