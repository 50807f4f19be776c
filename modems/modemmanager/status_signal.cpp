// Signal levels, in whole decibels.
#include "status.h"

#include <cmath>

namespace modem_manager
{
namespace
{

using daemons::ModemStatus;

// ModemManager makes the percentage from the index of AT+CSQ, 0 to 31.
int csq_level(int percent)
{
    constexpr int max_index = 31, min_level = -113;
    const int index = static_cast<int>(std::lround(percent * max_index / 100.0));
    return min_level + 2 * index;
}

// A level that has not been measured has the least value of its type.
std::optional<int> level(const Dictionary &levels, const char *name)
{
    constexpr double unknown_below = -1000;
    const std::optional<double> measured = find(levels, name).real();
    if (!measured || !std::isfinite(*measured) || *measured < unknown_below)
        return std::nullopt;
    return static_cast<int>(std::lround(*measured));
}

} // namespace

void add_signal(const ModemView &view, ModemStatus &status)
{
    if (!is_served(status))
        return;
    const std::optional<long long> percent = view.get("SignalQuality").item(0).number();
    if (percent && *percent > 0)
        status.signal.csq_rssi = csq_level(static_cast<int>(*percent));
    const Dictionary lte = view.get(signal_levels, "Lte").dictionary();
    status.signal.rsrp = level(lte, "rsrp");
    status.signal.rsrq = level(lte, "rsrq");
    status.signal.sinr = level(lte, "snr");
    status.signal.rssi = level(lte, "rssi");
    for (const char *technology : {"Umts", "Gsm"})
        if (!status.signal.rssi)
            status.signal.rssi = level(view.get(signal_levels, technology).dictionary(), "rssi");
    if (!status.signal.rssi)
        status.signal.rssi = status.signal.csq_rssi;
}

} // namespace modem_manager
