// What a modem is asked for without a request: to be enabled, and to report its signal and its
// cell. Each thing is tried once for a modem, not again and again; none of it costs anything.
#include "modem.h"

namespace modem_manager
{

using daemons::Roaming;

std::optional<Time> Modem::look_after()
{
    const std::string device = this->device();
    std::vector<std::pair<std::string, Call>> calls;
    bool enabled = false;
    tree_.read([&](const Objects &objects) {
        const ModemView view(objects, find_modem(objects, device));
        if (view.settled())
            calls = due_calls(view);
        enabled = view.state() >= state::enabled;
    });
    if (!enabled) // the reports end with it
        with_local_state([this](LocalState &) {
            for (const char *report : {"signal", "location"})
                tried_.erase(report);
        });
    for (auto &[what, call] : calls)
        try_once(what, call);
    read_cell();
    guard_connection();
    return std::nullopt;
}

// Each with what it is for.
std::vector<std::pair<std::string, Call>> Modem::due_calls(const ModemView &view) const
{
    const std::string &path = view.path();
    std::vector<std::pair<std::string, Call>> calls;
    if (view.state() == state::disabled)
        calls.emplace_back("enable",
                           Call{path, modem, "Enable", Value(g_variant_new("(b)", TRUE))});
    if (view.state() < state::enabled)
        return calls;
    const auto rate = static_cast<unsigned>(options_.refresh.count());
    if (view.has(signal_levels) && view.flags(signal_levels, "Rate") == 0)
        calls.emplace_back("signal",
                           Call{path, signal_levels, "Setup", Value(g_variant_new("(u)", rate))});
    const unsigned able = view.flags(location, "Capabilities");
    const unsigned now = view.flags(location, "Enabled");
    const bool told = view.get(location, "SignalsLocation").boolean().value_or(false);
    constexpr unsigned cell = location_source::lac_and_cell;
    if ((able & cell) && !((now & cell) && told))
        calls.emplace_back("location", Call{path, location, "Setup",
                                            Value(g_variant_new("(ub)", now | cell, TRUE))});
    return calls;
}

void Modem::try_once(const std::string &what, const Call &call)
{
    {
        const std::lock_guard lock(mutex_);
        const bool wanted = what != "enable" || local_state_.functionality == 1;
        if (stopped_ || !wanted || !tried_.insert(what).second)
            return;
    }
    if (tree_.bus().call(call).error == CmeError::ok)
        tree_.reload(call.path, call.interface);
}

// Channel and band change with the cell; a modem that can't tell is not asked again.
void Modem::read_cell()
{
    const ModemStatus now = status();
    std::string cell;
    for (const std::string &part : {now.cell.mcc, now.cell.mnc, now.cell.lac, now.cell.cell_id})
        cell += part + ' ';
    if (now.technology)
        cell += std::to_string(static_cast<int>(*now.technology));
    std::string path;
    {
        const std::lock_guard lock(mutex_);
        if (stopped_ || lost_at_ || !is_served(now) || cell == cell_read_ ||
            tried_.contains("no cell"))
            return;
        cell_read_ = cell;
        path = path_;
    }
    const Reply reply = tree_.bus().call({path, modem, "GetCellInfo"});
    with_local_state([&](LocalState &local) {
        local.cell_info = cell_info_of(reply.value.item(0));
        if (reply.error == CmeError::not_supported)
            tried_.insert("no cell");
    });
    signal_change();
}

// Ends a connection that roaming is not allowed for, and begins one that has been waited for.
void Modem::guard_connection()
{
    Target target;
    if (!find_settled(target))
        return;
    const bool abroad = target.status.registration == daemons::Registration::roaming;
    const bool up = is_up();
    bool begins = false, ends = false;
    const CmeError refusal = data_refusal(target.status, target.state);
    with_local_state([&](LocalState &local) {
        ends = up && abroad && local.roaming == Roaming::off && !connection_.busy();
        if (ends)
            local.last_error = CmeError::network_not_allowed;
        begins = auto_connect_ && refusal == CmeError::ok;
        if (begins)
            auto_connect_ = false;
        begins = begins && !up;
    });
    if (ends)
        connection_.disconnect();
    if (begins)
        connection_.connect();
}

} // namespace modem_manager
