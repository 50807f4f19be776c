// The network: selection, search, modes, packet service.
#include "at_commands.h"
#include "modem.h"

namespace modem_manager
{
namespace
{

using namespace std::chrono_literals;
using daemons::Operator;
using daemons::OperatorState;
using daemons::Roaming;
using daemons::SearchMode;
using daemons::Technology;

struct Modes {
    unsigned allowed, preferred;
};

unsigned wanted_mode(SearchMode mode)
{
    static constexpr unsigned modes[] = {mode::any, mode::gsm, mode::umts, mode::lte};
    return modes[static_cast<std::size_t>(mode)];
}

// Of the combinations that the modem has; for `any` the one with the most modes.
std::optional<Modes> find_modes(const Value &supported, SearchMode wanted)
{
    std::optional<Modes> found;
    for (const Value &each : supported.items()) {
        const auto allowed = static_cast<unsigned>(each.item(0).number().value_or(0));
        const auto preferred = static_cast<unsigned>(each.item(1).number().value_or(0));
        const bool fits =
            wanted == SearchMode::any
                ? !found || __builtin_popcount(allowed) > __builtin_popcount(found->allowed)
                : allowed == wanted_mode(wanted);
        if (fits && (!found || wanted == SearchMode::any || preferred == mode::none))
            found = Modes{allowed, preferred};
    }
    return found;
}

std::optional<Technology> technology_of(unsigned access)
{
    if (access & access::lte)
        return Technology::eutran;
    if (access & (access::umts | access::hsdpa | access::hsupa | access::hspa | access::hspa_plus))
        return Technology::utran;
    if (access & (access::gsm | access::gprs | access::edge))
        return Technology::gsm;
    return std::nullopt;
}

Operator operator_of(const Dictionary &found)
{
    const long long state = find(found, "status").number().value_or(0);
    const auto access = find(found, "access-technology").number().value_or(0);
    return {state >= 0 && state <= 3 ? static_cast<OperatorState>(state) : OperatorState::unknown,
            find(found, "operator-long").text(), find(found, "operator-short").text(),
            find(found, "operator-code").text(), technology_of(static_cast<unsigned>(access))};
}

} // namespace

CmeError Modem::set_search_mode(SearchMode mode)
{
    return change(Needs::nothing, [&](const Target &target) {
        const auto modes = tree_.read([&](const Objects &objects) {
            return find_modes(ModemView(objects, target.path).get("SupportedModes"), mode);
        });
        if (!modes)
            return CmeError::not_supported;
        return call(target, modem, "SetCurrentModes",
                    Value(g_variant_new("((uu))", modes->allowed, modes->preferred)))
            .error;
    });
}

// ModemManager takes no technology: whichever the modem registers with is right.
CmeError Modem::select_operator(std::string_view plmn, std::optional<Technology>)
{
    return change(Needs::radio, [&](const Target &target) {
        const Reply reply = call(target, modem_3gpp, "Register",
                                 Value(g_variant_new("(s)", std::string(plmn).c_str())));
        if (reply.error == CmeError::ok)
            with_local_state([](LocalState &local) { local.manual_selection = true; });
        return reply.error;
    });
}

CmeError Modem::select_automatically()
{
    return change(Needs::nothing, [&](const Target &target) {
        const Reply reply = call(target, modem_3gpp, "Register", Value(g_variant_new("(s)", "")));
        if (reply.error == CmeError::ok)
            with_local_state([](LocalState &local) { local.manual_selection = false; });
        return reply.error;
    });
}

CmeError Modem::search(std::vector<Operator> &found)
{
    const CmeError error = change(Needs::radio, [&](const Target &target) {
        with_local_state([](LocalState &local) { local.search = CmeError::search_running; });
        signal_change();
        const Reply reply = call(target, modem_3gpp, "Scan");
        for (const Value &each : reply.value.item(0).items())
            found.push_back(operator_of(each.dictionary()));
        return reply.error;
    });
    with_local_state([&](LocalState &local) { local.search = error; });
    signal_change();
    return error;
}

CmeError Modem::set_roaming(Roaming roaming)
{
    with_local_state([&](LocalState &local) { local.roaming = roaming; });
    upkeep_.wake(); // a connection while roaming may have to end
    signal_change();
    return CmeError::ok;
}

CmeError Modem::set_packet_domain(bool on)
{
    return change(Needs::nothing, [&](const Target &target) {
        const unsigned wanted = on ? packet_service::attached : packet_service::detached;
        CmeError error =
            call(target, modem_3gpp, "SetPacketServiceState", Value(g_variant_new("(u)", wanted)))
                .error;
        if (error == CmeError::not_supported)
            error = at_port_.send(set_packet_domain_command(on)).error;
        if (error == CmeError::ok)
            with_local_state([&](LocalState &local) { local.packet_domain = on; });
        return error;
    });
}

} // namespace modem_manager
