// How strong the signal is (3GPP TS 27.007, 8.5, 8.69), and the indicators.
#include "command.h"
#include "indicators.h"

#include <algorithm>

namespace at_front
{
namespace
{

using daemons::ModemStatus;
using daemons::Technology;

Answer show_signal(Call &call)
{
    return line("+CSQ: " + std::to_string(received_signal(call.device.modem().status())) + ",99");
}

// In steps of 1 dBm, or of 0.5 dB for the RSRQ, from a lowest value on.
int step_of(int value, int lowest, int steps, int best)
{
    return std::clamp((value - lowest) * steps, 0, best);
}

Answer show_extended_signal(Call &call)
{
    int rxlev = 99, rsrq = 255, rsrp = 255;
    const ModemStatus status = call.device.modem().status();
    if (status.technology == Technology::gsm && status.signal.rssi)
        rxlev = step_of(*status.signal.rssi, -111, 1, 63);
    if (status.signal.rsrq)
        rsrq = step_of(*status.signal.rsrq, -20, 2, 34);
    if (status.signal.rsrp)
        rsrp = step_of(*status.signal.rsrp, -141, 1, 97);
    return line("+CESQ: " + std::to_string(rxlev) + ",99,255,255," + std::to_string(rsrq) + "," +
                std::to_string(rsrp));
}

Answer read_indicators(Call &call)
{
    std::string text;
    for (const int value : indicators_of(call.device.modem().status()))
        text += (text.empty() ? "+CIND: " : ",") + std::to_string(value);
    return line(text);
}

Answer read_reports(Call &call)
{
    return line("+CMER: " + std::string(call.session.indicators > 0 ? "3" : "0") + ",0,0," +
                std::to_string(call.session.indicators));
}

// The mode, the keypad, the display, and the indicators, of which all are reported or none.
Answer set_reports(Call &call)
{
    const auto mode = call.given.number(0, 0, 0, 3), indicators = call.given.number(3, 0, 0, 2);
    if (!mode || !indicators)
        return incorrect;
    call.session.indicators = *mode == 0 ? 0 : *indicators;
    return ok;
}

// clang-format off
constexpr Command rows[] = {
    // name    test                                      read             set          execute
    {"+CSQ",  "(0-31,99),(99)",                         nullptr,         nullptr,     show_signal},
    {"+CESQ", "(0-63,99),(99),(255),(255),(0-34,255),(0-97,255)", nullptr, nullptr,   show_extended_signal},
    {"+CIND", indicator_ranges,                         read_indicators, nullptr,     nullptr},
    {"+CMER", "(0,1,3),(0),(0),(0-2),(0)",              read_reports,    set_reports, nullptr},
};
// clang-format on

} // namespace

Commands signal_commands()
{
    return rows;
}

} // namespace at_front
