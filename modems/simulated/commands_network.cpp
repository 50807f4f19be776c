// The network around the modem: its signal, its coverage, its cells, and whom it takes.
#include "commands.h"
#include "daemons/digits.h"
#include "reject_cause.h"

#include <algorithm>
#include <stdexcept>

namespace simulated
{
namespace
{

using scenario::Action;
using scenario::Words;

struct SignalField {
    std::string_view name;
    std::optional<int> FixedSignal::*member;
    int min, max;
};
constexpr SignalField signal_fields[] = {{"rsrp", &FixedSignal::rsrp, -140, -44},
                                         {"rsrq", &FixedSignal::rsrq, -20, -3},
                                         {"rssi", &FixedSignal::rssi, -120, -25},
                                         {"sinr", &FixedSignal::sinr, -23, 40}};

// NAME=NUMBER
void take_signal_field(Words &words, FixedSignal &signal)
{
    constexpr std::string_view rule = "auto, or some of rsrp=N, rsrq=N, rssi=N, sinr=N";
    for (const SignalField &field : signal_fields)
        if (!(signal.*field.member))
            words.offer(std::string(field.name) + "=");
    const std::string text = words.take("the signal", rule).text;
    const std::string name = text.substr(0, text.find('='));
    const auto *const field =
        std::find_if(std::begin(signal_fields), std::end(signal_fields),
                     [&](const SignalField &one) { return one.name == name; });
    if (field == std::end(signal_fields) || name.size() == text.size())
        words.refuse("the signal", rule);
    if (signal.*field->member)
        words.fail("a value is given once");
    const std::string number = text.substr(name.size() + 1);
    const std::optional<int> value = daemons::to_number(number);
    if (!value || *value < field->min || *value > field->max)
        words.fail(name + " is a whole number from " + std::to_string(field->min) + " to " +
                   std::to_string(field->max));
    signal.*field->member = value;
}

Action parse_signal(Modem &modem, Words &words)
{
    FixedSignal signal;
    if (!words.take_if("auto"))
        do
            take_signal_field(words, signal);
        while (!words.at_end());
    return [&modem, signal] {
        modem.apply([&](ModemState &state, Time) { state.signal.fix(signal); });
    };
}

Action parse_coverage(Modem &modem, Words &words)
{
    const std::string name =
        words.take_one_of("the coverage", {"full", "none", "eutran", "utran", "gsm"});
    const Coverage coverage = name == "full"     ? Coverage::full
                              : name == "none"   ? Coverage::none
                              : name == "eutran" ? Coverage::eutran_only
                              : name == "utran"  ? Coverage::utran_only
                                                 : Coverage::gsm_only;
    return [&modem, coverage] {
        modem.apply([&](ModemState &state, Time) { state.network.set_coverage(coverage); });
    };
}

Action deny(Modem &modem, bool denied)
{
    return [&modem, denied] {
        modem.apply([&](ModemState &state, Time) { state.network.set_denied(denied); });
    };
}

Action parse_deny(Modem &modem, Words &words)
{
    take_cause(words, registration_causes());
    return deny(modem, true);
}

Action parse_allow(Modem &modem, Words &)
{
    return deny(modem, false);
}

Action move_to(Modem &modem, const std::string &plmn)
{
    return [&modem, plmn] {
        modem.apply([&](ModemState &state, Time) { state.network.move_to(plmn); });
    };
}

Action parse_roam(Modem &modem, Words &words)
{
    for (const std::string &each : Network::plmns())
        words.offer(each);
    const auto plmns = Network::plmns();
    const std::string rule = scenario::one_of(plmns);
    const std::string plmn = words.take("the network", rule).text;
    if (std::find(plmns.begin(), plmns.end(), plmn) == plmns.end())
        words.refuse("the network", rule);
    return move_to(modem, plmn);
}

Action parse_home(Modem &modem, Words &)
{
    return move_to(modem, "");
}

Action parse_handover(Modem &modem, Words &)
{
    return [&modem] {
        modem.apply([](ModemState &state, Time) {
            if (!state.network.handover())
                throw std::runtime_error("no handover: the modem is not registered");
        });
    };
}

} // namespace

scenario::Commands network_commands(Modem &modem)
{
    const auto bind = [&modem](Action (*parse)(Modem &, Words &)) {
        return [&modem, parse](Words &words) { return parse(modem, words); };
    };
    // clang-format off
    return {
        {"signal",   "[rsrp=DBM] [rsrq=DB] [rssi=DBM] [sinr=DB] | auto", "fix these values; auto lets all drift", bind(parse_signal)},
        {"coverage", "full|none|eutran|utran|gsm", "leave only cells of this technology in reach, or none", bind(parse_coverage)},
        {"deny",     "CAUSE",                  "have every network refuse the registration",     bind(parse_deny)},
        {"allow",    "",                       "have the networks accept it again",              bind(parse_allow)},
        {"roam",     "PLMN",                   "leave only this network in reach",               bind(parse_roam)},
        {"home",     "",                       "put all networks in reach again",                bind(parse_home)},
        {"handover", "",                       "move the modem to the neighbouring cell",        bind(parse_handover)},
    };
    // clang-format on
}

} // namespace simulated
