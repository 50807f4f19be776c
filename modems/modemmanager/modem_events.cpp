// What happens to the modem: it comes and goes, changes, connects and loses its connection.
#include "modem.h"

namespace modem_manager
{
namespace
{

using Clock = std::chrono::steady_clock;

// Of a bearer that has lost its connection. The modem may not tell why.
CmeError reason_of_loss(const ModemView &view)
{
    for (const std::string &path : view.get("Bearers").texts()) {
        const std::string name =
            property(view.objects(), path, bearer, "ConnectionError").item(0).text();
        if (const CmeError error = error_of(name); error != CmeError::unknown)
            return error;
    }
    return CmeError::no_network_service;
}

// What the daemon itself keeps goes on to change while the modem is away.
ModemStatus as_it_was(const ModemStatus &last, const LocalState &local)
{
    ModemStatus status = last;
    const ModemStatus own = status_of(local);
    status.messages = own.messages;
    status.search = own.search;
    status.data_profile = own.data_profile;
    status.last_error = own.last_error;
    status.last_apn = own.last_apn;
    status.roaming = local.roaming;
    return status;
}

} // namespace

void Modem::objects_changed()
{
    {
        const std::string device = this->device();
        const std::lock_guard lock(mutex_);
        tree_.read([&](const Objects &objects) {
            const ModemView view(objects, find_modem(objects, device));
            if (view.path() != path_) {
                tried_.clear();
                cell_read_.clear();
            }
            path_ = view.path();
            last_version_.reset();
            if (!path_.empty())
                first_device_ = view.get("Device").text();
            if (view.settled()) {
                lost_at_.reset();
                given_up_ = false;
                note_connection(view);
            } else if (!lost_at_)
                lost_at_ = Clock::now();
        });
    }
    clock_.wake();
    upkeep_.wake();
    signal_change();
}

// For the holder of the lock.
void Modem::note_connection(const ModemView &view) const
{
    const bool connected = !view.connected_bearer().empty();
    if (connected != connected_)
        last_version_.reset();
    if (connected && !connected_) {
        const auto before = find(view.of_bearer("Stats").dictionary(), "duration").number();
        local_state_.connected_since = Clock::now() - std::chrono::seconds(before.value_or(0));
        local_state_.last_apn = find(view.of_bearer("Properties").dictionary(), "apn").text();
    }
    if (!connected && connected_) {
        local_state_.connected_since.reset();
        if (!connection_.busy())
            local_state_.last_error = reason_of_loss(view);
    }
    connected_ = connected;
}

// Asked for with every request: what has not changed is not read out of D-Bus's values again.
ModemStatus Modem::status() const
{
    const std::string device = this->device();
    const std::lock_guard lock(mutex_);
    if (const bool busy = connection_.busy(); busy != local_state_.in_transition) {
        local_state_.in_transition = busy;
        last_version_.reset();
    }
    return tree_.read([&](const Objects &objects) {
        if (last_version_ == tree_.version()) {
            add_uptime(local_state_, last_);
            return last_;
        }
        const ModemView view(objects, find_modem(objects, device));
        if (!view.settled() && (!lost_at_ || Clock::now() < *lost_at_ + options_.grace))
            return as_it_was(last_, local_state_);
        if (view.settled()) // which objects_changed() may not have seen yet
            note_connection(view);
        last_ = view.path().empty() ? status_of(local_state_) : status_of(view, local_state_);
        local_state_.last_cell = last_.last_cell;
        if (view.settled())
            last_version_ = tree_.version();
        return last_;
    });
}

// A modem that is away for a moment keeps its connection, or loses it at the end of the grace.
void Modem::apply_addresses()
{
    if (!options_.apply_address)
        return;
    const std::string device = this->device();
    const auto settings = tree_.read([&](const Objects &objects) {
        const ModemView view(objects, find_modem(objects, device));
        return view.settled() ? std::optional(ip_settings_of(view)) : std::nullopt;
    });
    if (settings)
        addresses_.apply(*settings);
}

// The end of the grace, and the connection's age. Without either there is nothing to wait for.
std::optional<Time> Modem::pass_time()
{
    apply_addresses();
    const Time now = Clock::now();
    std::optional<Time> next;
    bool gone = false, unplugged = false;
    {
        const std::lock_guard lock(mutex_);
        if (lost_at_ && now < *lost_at_ + options_.grace)
            return *lost_at_ + options_.grace;
        gone = lost_at_ && !given_up_;
        given_up_ = lost_at_.has_value();
        unplugged = gone && path_.empty();
        if (unplugged) {
            last_version_.reset();
            first_device_.clear();
            if (connected_)
                local_state_.last_error = CmeError::no_connection_to_phone;
            connected_ = false;
            local_state_.connected_since.reset();
        }
        if (connected_)
            next = now + options_.refresh;
    }
    if (unplugged) {
        tree_.bus().cancel(); // what waits for an answer of the modem that is gone
        addresses_.apply({});
    }
    if (gone || next)
        signal_change();
    return next;
}

} // namespace modem_manager
