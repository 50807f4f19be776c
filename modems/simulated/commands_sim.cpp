// The SIM card: in, out, failed, another one, and the attempts that its codes have left.
#include "commands.h"

#include <stdexcept>

namespace simulated
{
namespace
{

using scenario::Action;
using scenario::Words;

Action remove(Modem &modem)
{
    return [&modem] { modem.apply([](ModemState &state, Time) { state.remove_sim(); }); };
}

Action fail(Modem &modem)
{
    return [&modem] { modem.apply([](ModemState &state, Time) { state.fail_sim(); }); };
}

Action parse_insert(Modem &modem, Words &words)
{
    words.offer("other");
    const bool other = !words.at_end() && !words.take_one_of("the card", {"other"}).empty();
    return [&modem, other] {
        modem.apply([&](ModemState &state, Time now) {
            if (!other && state.has_working_sim())
                throw std::runtime_error("no card to insert: it is in already");
            state.insert_sim(other, now);
        });
    };
}

// Without a network, to one that rejects the card that is in.
Action parse_lock_network(Modem &modem, Words &words)
{
    const std::string plmn = words.at_end() ? "" : words.take_digits("the network", 5, 6);
    return [&modem, plmn] {
        modem.apply([&](ModemState &state, Time) {
            const std::string_view home = state.sim.identity.home_network;
            const char *const foreign =
                (home == first_sim.home_network ? other_sim : first_sim).home_network;
            state.lock.bind(plmn.empty() ? foreign : plmn);
        });
    };
}

Action parse_sim(Modem &modem, Words &words)
{
    const std::string what =
        words.take_one_of("what happens to the SIM", {"remove", "insert", "fail", "lock-network"});
    if (what == "insert")
        return parse_insert(modem, words);
    if (what == "lock-network")
        return parse_lock_network(modem, words);
    return what == "remove" ? remove(modem) : fail(modem);
}

Action parse_pin_tries(Modem &modem, Words &words)
{
    const int attempts = words.take_number("the number of attempts", 0, Pin::max_attempts);
    return [&modem, attempts] {
        modem.apply([&](ModemState &state, Time) { state.sim.pin1.set_attempts(attempts); });
    };
}

Action parse_puk_tries(Modem &modem, Words &words)
{
    const int attempts = words.take_number("the number of attempts", 0, Pin::max_puk_attempts);
    return [&modem, attempts] {
        modem.apply([&](ModemState &state, Time) { state.sim.pin1.set_puk_attempts(attempts); });
    };
}

} // namespace

scenario::Commands sim_commands(Modem &modem)
{
    const auto bind = [&modem](Action (*parse)(Modem &, Words &)) {
        return [&modem, parse](Words &words) { return parse(modem, words); };
    };
    // clang-format off
    return {
        {"sim",       "remove | insert [other] | fail | lock-network [PLMN]", "take the card out, put it or another one in, have it fail, or bind the modem to a network", bind(parse_sim)},
        {"pin-tries", "N", "leave N attempts for the PIN, 0 to 3", bind(parse_pin_tries)},
        {"puk-tries", "N", "leave N attempts for the PUK, 0 to 10; with 0 the card is dead", bind(parse_puk_tries)},
    };
    // clang-format on
}

} // namespace simulated
