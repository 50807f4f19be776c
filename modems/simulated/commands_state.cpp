// The modem as a whole: where it is on its way to a connection, its crash, its silence.
#include "commands.h"
#include "reject_cause.h"

#include <stdexcept>

namespace simulated
{
namespace
{

using namespace std::chrono_literals;
using scenario::Action;
using scenario::Words;

constexpr auto crash_time = 5s;

Action parse_state(Modem &modem, Words &words)
{
    const std::string name =
        words.take_one_of("the state", {"locked", "unlocked", "registered", "connected"});
    const Preset preset = name == "locked"       ? Preset::locked
                          : name == "unlocked"   ? Preset::unlocked
                          : name == "registered" ? Preset::registered
                                                 : Preset::connected;
    return [&modem, preset] {
        modem.apply([&](ModemState &state, Time now) { state.bring_to(preset, now); });
    };
}

// A connection that the network ends with a request to come back comes back by itself.
void drop(ModemState &state, CmeError error, Time now)
{
    if (state.connection.state() == daemons::ConnectionState::disconnected)
        throw std::runtime_error("no connection to drop: the data connection is down");
    if (error == CmeError::ok)
        return state.connection.reactivate(now);
    state.connection.drop(error);
}

Action parse_connection(Modem &modem, Words &words)
{
    words.take_one_of("what happens to the connection", {"drop"});
    const CmeError error = words.at_end() ? CmeError::no_network_service
                                          : take_cause(words, connection_causes()).error;
    return [&modem, error] {
        modem.apply([&](ModemState &state, Time now) { drop(state, error, now); });
    };
}

Action parse_reset(Modem &modem, Words &words)
{
    const std::chrono::milliseconds time =
        words.at_end() ? crash_time : words.take_duration("the time without a modem");
    return [&modem, time] {
        modem.apply([&](ModemState &state, Time now) { state.crash(time, now); });
    };
}

Action parse_silent(Modem &modem, Words &words)
{
    const std::chrono::milliseconds time = words.take_duration("the time of silence");
    return [&modem, time] { modem.stop_answering(time); };
}

Action parse_modem(Modem &modem, Words &words)
{
    if (words.take_one_of("what happens to the modem", {"reset", "silent"}) == "reset")
        return parse_reset(modem, words);
    return parse_silent(modem, words);
}

} // namespace

scenario::Commands modem_state_commands(Modem &modem)
{
    const auto bind = [&modem](Action (*parse)(Modem &, Words &)) {
        return [&modem, parse](Words &words) { return parse(modem, words); };
    };
    // clang-format off
    return {
        {"connection", "drop [CAUSE]", "have the network end the data connection", bind(parse_connection)},
        {"state",      "locked|unlocked|registered|connected", "bring the modem there at once", bind(parse_state)},
        {"modem",      "reset [DURATION] | silent DURATION", "crash and start again, or answer nothing for a time", bind(parse_modem)},
    };
    // clang-format on
}

} // namespace simulated
