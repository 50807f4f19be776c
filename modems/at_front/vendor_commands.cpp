// Commands of one vendor, as ModemManager's u-blox plugin uses them: attempts left, the choice of
// radio technologies, and a network interface with a static address.
#include "command.h"
#include "contexts.h"

namespace at_front
{
namespace
{

using daemons::RetryCounters;
using daemons::SearchMode;

Answer show_attempts(Call &call)
{
    const RetryCounters left = call.device.modem().status().attempts;
    if (!left.pin1)
        return ended(CmeError::sim_not_inserted);
    std::string text = "+UPINCNT: ";
    for (const auto &count : {left.pin1, left.pin2, left.puk1, left.puk2})
        text += std::to_string(count.value_or(0)) + ",";
    text.pop_back();
    return line(text);
}

// GSM, GSM and UMTS, UMTS, LTE, all three, GSM and LTE, UMTS and LTE.
constexpr int gsm_only = 0, umts_only = 2, lte_only = 3, last_selection = 6;

// The modem knows one technology or all: a choice of two is remembered, and all are searched.
Answer read_radio_access(Call &call)
{
    switch (call.device.modem().status().search_mode.value_or(SearchMode::any)) {
    case SearchMode::gsm_only:
        return line("+URAT: " + std::to_string(gsm_only));
    case SearchMode::utran_only:
        return line("+URAT: " + std::to_string(umts_only));
    case SearchMode::eutran_only:
        return line("+URAT: " + std::to_string(lte_only));
    default:
        return line("+URAT: " + std::to_string(call.device.radio_access()));
    }
}

Answer set_radio_access(Call &call)
{
    const auto selection = call.given.number(0);
    if (!selection || *selection < 0 || *selection > last_selection)
        return incorrect;
    const SearchMode mode = *selection == gsm_only    ? SearchMode::gsm_only
                            : *selection == umts_only ? SearchMode::utran_only
                            : *selection == lte_only  ? SearchMode::eutran_only
                                                      : SearchMode::any;
    if (mode == SearchMode::any)
        call.device.set_radio_access(*selection);
    return ended(call.device.modem().set_search_mode(mode));
}

Answer read_bands(Call &)
{
    return line("+UBANDSEL: 800,900,1800,2100,2600"); // those that the cells in reach use
}

Answer read_usb_profile(Call &)
{
    return line(R"(+UUSBCONF: 3,"RNDIS",,"0xffff")");
}

Answer read_networking_mode(Call &)
{
    return line("+UBMCONF: 2"); // a bridge: the host has the address that the network gives
}

std::string quoted(const std::string &text)
{
    return '"' + text + '"';
}

Answer show_interface(Call &call)
{
    const auto number = call.given.number(0, 1);
    if (!number || connected_context(call.device) != number)
        return ended(CmeError::not_allowed);
    const bool ipv4 = !call.device.status().ipv4_address.empty();
    return line("+UIPADDR: " + std::to_string(*number) + ",\"ccinet0\"," +
                quoted(ipv4 ? ipv4_gateway : "") + "," + quoted(ipv4 ? ipv4_mask : "") +
                R"(,"","")");
}

// clang-format off
constexpr Command rows[] = {
    // name       test              read                  set               execute
    {"+UPINCNT",  "",               nullptr,              nullptr,          show_attempts},
    {"+URAT",     "(0-6),(0,2,3)",  read_radio_access,    set_radio_access, nullptr},
    {"+UBANDSEL", "",               read_bands,           nullptr,          nullptr},
    {"+UUSBCONF", "",               read_usb_profile,     nullptr,          nullptr},
    {"+UBMCONF",  "(1-2)",          read_networking_mode, nullptr,          nullptr},
    {"+UIPADDR",  "",               nullptr,              show_interface,   nullptr},
};
// clang-format on

} // namespace

Commands vendor_commands()
{
    return rows;
}

} // namespace at_front
