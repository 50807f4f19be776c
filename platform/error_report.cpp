#include "error_report.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <functional>

namespace host_store
{
namespace
{

// Uses no lock: a child forked in the meantime would inherit it locked.
bool is_new(const std::string &line)
{
    static constinit std::array<std::atomic<std::size_t>, 64> printed{};
    const std::size_t hash = std::hash<std::string>{}(line) | 1U; // 0 marks a free slot
    for (auto &slot : printed) {
        std::size_t found = 0;
        if (slot.compare_exchange_strong(found, hash))
            return true;
        if (found == hash)
            return false;
    }
    return true;
}

} // namespace

void report_error(const std::string &where, const std::string &what, const std::string &remedy)
{
    const std::string line = "cmif store: " + where + ": " + what + "; " + remedy + "\n";
    if (is_new(line))
        std::fputs(line.c_str(), stderr);
}

} // namespace host_store
