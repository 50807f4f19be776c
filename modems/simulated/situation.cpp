#include "situation.h"

namespace simulated
{

Situation situation_of(const ModemState &state)
{
    return {!state.down() && state.sim_status() == SimStatus::ready,
            state.network.serving() != nullptr,
            state.searching(),
            state.down(),
            state.connection.state(),
            state.messages.delivered()};
}

std::vector<std::string_view> events_between(const Situation &before, const Situation &after)
{
    using enum daemons::ConnectionState;
    const struct {
        bool happened;
        std::string_view name;
    } events[] = {
        {!before.down && after.down, "down"},
        {before.down && !after.down, "up"},
        {!before.sim_ready && after.sim_ready, "sim-ready"},
        {!before.registered && after.registered, "registered"},
        {before.registered && !after.registered, "unregistered"},
        {!before.searching && after.searching, "searching"},
        {before.searching && !after.searching, "search-done"},
        {before.connection != connected && after.connection == connected, "connected"},
        {before.connection != disconnected && after.connection == disconnected, "disconnected"},
        {after.messages > before.messages, "sms"},
    };
    std::vector<std::string_view> names;
    for (const auto &event : events)
        if (event.happened)
            names.push_back(event.name);
    return names;
}

} // namespace simulated
