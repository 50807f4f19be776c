#include "abilities.h"

namespace modem_manager
{
namespace
{

constexpr const char *locked = "enter the PIN first: ModemManager shows this of an open SIM alone";
constexpr const char *give_port = "ModemManager has no way; give --at-port";

using Judge = Ability (*)(const ModemView &view, bool at_port);

Ability yes(const char *why = "")
{
    return {"", 0, "", Way::yes, why};
}
Ability no(const char *why)
{
    return {"", 0, "", Way::no, why};
}

Ability not_yet()
{
    return {"", 0, "", Way::unknown, locked};
}

// With the interface, or else by AT commands.
Ability by_interface(const ModemView &view, const char *interface, const char *missing)
{
    if (view.has(interface))
        return yes();
    if (view.state() == state::locked)
        return not_yet();
    return no(missing);
}

Ability by_port(bool at_port, const char *why = give_port)
{
    return at_port ? Ability{"", 0, "", Way::by_at, ""} : no(why);
}

Ability always(const ModemView &, bool)
{
    return yes();
}

Ability own(const ModemView &, bool)
{
    return yes("the daemon's own setting");
}

Ability network(const ModemView &view, bool)
{
    return by_interface(view, modem_3gpp, "not a modem of GSM, UMTS or LTE");
}

Ability modes(const ModemView &view, bool)
{
    unsigned single = 0;
    for (const Value &each : view.get("SupportedModes").items()) {
        const auto allowed = static_cast<unsigned>(each.item(0).number().value_or(0));
        if (allowed == mode::gsm || allowed == mode::umts || allowed == mode::lte)
            single |= allowed;
    }
    if (single == 0)
        return no("the modem can't be limited to one technology");
    const bool all = single == (mode::gsm | mode::umts | mode::lte);
    return yes(all ? "" : "not to each technology");
}

Ability attempts(const ModemView &view, bool)
{
    return view.get("UnlockRetries").items().empty() ? no("the modem does not tell") : yes();
}

Ability packet_domain(const ModemView &view, bool at_port)
{
    if (view.state() == state::locked && !at_port)
        return not_yet();
    const bool known = view.flags(modem_3gpp, "PacketServiceState") != 0;
    return known ? yes()
                 : by_port(at_port, "ModemManager does not know it of this modem; give --at-port");
}

Ability release_network(const ModemView &, bool at_port)
{
    return yes(at_port ? "otherwise by AT"
                       : "if ModemManager can with this modem; otherwise give --at-port");
}

Ability port_alone(const ModemView &, bool at_port)
{
    return by_port(at_port);
}

Ability messages(const ModemView &view, bool)
{
    return by_interface(view, messaging, "ModemManager knows no messages of this modem");
}

Ability profile(const ModemView &view, bool at_port)
{
    if (view.state() == state::locked && !at_port)
        return not_yet();
    return view.has(profiles) ? yes() : by_port(at_port);
}

Ability reset(const ModemView &, bool)
{
    return yes("if ModemManager can with this modem");
}

Ability management(const ModemView &view, bool)
{
    return by_interface(view, oma, "ModemManager has no device management for this modem");
}

Ability connection(const ModemView &view, bool)
{
    return by_interface(view, simple, "ModemManager can't connect this modem");
}

Ability never(const ModemView &, bool)
{
    return no("a modem in download mode may not come back: never done");
}

struct Row {
    const char *channel;
    int code;
    const char *request;
    Judge judge;
};

// clang-format off
constexpr Row rows[] = {
    {"AT",  1,  "time zone",                     port_alone},
    {"AT",  2,  "search mode, band region",      modes},
    {"AT",  3,  "automatic selection",           network},
    {"AT",  4,  "attempts left",                 attempts},
    {"AT",  6,  "packet domain",                 packet_domain},
    {"AT",  7,  "set packet domain",             packet_domain},
    {"AT",  8,  "PIN mode",                      network},
    {"AT",  9,  "set PIN mode",                  always},
    {"AT",  10, "network lock",                  port_alone},
    {"AT",  11, "network unlock",                release_network},
    {"AT",  12, "enter PIN",                     always},
    {"AT",  13, "change PIN",                    always},
    {"AT",  14, "enter PUK",                     always},
    {"AT",  15, "roaming",                       own},
    {"AT",  16, "format of the operator's name", own},
    {"AT",  17, "select operator",               network},
    {"AT",  18, "list messages",                 messages},
    {"AT",  19, "delete messages",               messages},
    {"AT",  20, "firmware download",             never},
    {"AT",  21, "factory reset",                 reset},
    {"AT",  22, "functionality level",           always},
    {"AT",  23, "state of the search",           network},
    {"AT",  24, "search for operators",          network},
    {"AT",  25, "connection profile",            profile},
    {"AT",  26, "device-management session",     management},
    {"AT",  27, "synchronize profile",           profile},
    {"QMI", 1,  "device revision",               always},
    {"QMI", 3,  "modify profile",                connection},
    {"QMI", 4,  "start",                         connection},
    {"QMI", 5,  "stop",                          connection},
    {"QMI", 6,  "SIM status",                    always},
    {"QMI", 8,  "packet-switched service",       packet_domain},
    {"QMI", 9,  "firmware download",             never},
};
// clang-format on

} // namespace

std::vector<Ability> abilities_of(const ModemView &view, bool at_port)
{
    std::vector<Ability> all;
    for (const Row &row : rows) {
        const Ability found = row.judge(view, at_port);
        all.push_back({row.channel, row.code, row.request, found.way, found.why});
    }
    return all;
}

} // namespace modem_manager
