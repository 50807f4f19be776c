#include "modem.h"

namespace modem_manager
{

Modem::Modem(Options options)
    : options_(std::move(options)), at_port_(options_.at_port, options_.verbose),
      tree_(options_.bus, options_.verbose, [this] { objects_changed(); }),
      connection_({[this] { dial(); }, [this] { hang_up(); }, [this] { signal_change(); },
                   [this] { tree_.bus().cancel("Connect"); }}),
      clock_([this] { return pass_time(); }), upkeep_([this] { return look_after(); })
{
}

Modem::~Modem()
{
    stop();
    tree_.end(); // what it reports concerns members that go before it
}

std::string Modem::start()
{
    return tree_.start();
}

void Modem::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    connection_.stop();
    clock_.stop();
    upkeep_.stop();
    at_port_.stop();
    tree_.stop();
}

void Modem::watch(std::function<void()> changed)
{
    const std::lock_guard lock(watch_mutex_);
    changed_ = std::move(changed);
}

void Modem::signal_change()
{
    const std::lock_guard lock(watch_mutex_);
    if (changed_)
        changed_();
}

std::string Modem::path() const
{
    const std::lock_guard lock(mutex_);
    return path_;
}

Presence Modem::presence() const
{
    if (!path().empty())
        return Presence::found;
    if (tree_.denied())
        return Presence::no_permission;
    return tree_.has_manager() ? Presence::no_modem : Presence::no_manager;
}

std::string Modem::device() const
{
    if (!options_.device.empty())
        return options_.device;
    const std::lock_guard lock(mutex_);
    return first_device_;
}

CmeError Modem::refusal(Needs needs, const ModemStatus &status, int state) const
{
    using enum daemons::SimStatus;
    if (needs == Needs::nothing || !status.sim)
        return CmeError::ok;
    if (status.sim == absent)
        return CmeError::sim_not_inserted;
    if (status.sim == not_ready)
        return state == state::failed ? CmeError::sim_failure : CmeError::sim_busy;
    if (needs == Needs::sim)
        return CmeError::ok;
    if (status.sim == permanently_blocked)
        return CmeError::sim_failure;
    if (status.sim == puk_required)
        return CmeError::sim_puk_required;
    if (status.sim == pin_required)
        return CmeError::sim_pin_required;
    if (needs == Needs::unlocked_sim)
        return CmeError::ok;
    if (status.sim == network_locked)
        return CmeError::network_pin_required;
    const std::lock_guard lock(mutex_);
    if (local_state_.functionality != 1)
        return CmeError::not_allowed;
    if (needs == Needs::radio || is_served(status))
        return CmeError::ok;
    return status.registration == daemons::Registration::denied ? CmeError::network_not_allowed
                                                                : CmeError::no_network_service;
}

CmeError Modem::find_target(Needs needs, Target &target)
{
    std::chrono::milliseconds patience = options_.grace; // of a loss that is not noted yet, too
    {
        const std::lock_guard lock(mutex_);
        if (stopped_)
            return CmeError::no_connection_to_phone;
        if (lost_at_)
            patience = std::chrono::ceil<std::chrono::milliseconds>(
                *lost_at_ + options_.grace - std::chrono::steady_clock::now());
    }
    wait_for(std::max(patience, std::chrono::milliseconds(0)),
             [](const ModemView &) { return true; });
    return find_settled(target) ? refusal(needs, target.status, target.state)
                                : CmeError::no_connection_to_phone;
}

// As it is now, without waiting.
bool Modem::find_settled(Target &target)
{
    const bool found = wait_for(std::chrono::milliseconds(0), [&](const ModemView &view) {
        target.path = view.path();
        target.sim = view.sim_path();
        target.state = view.state();
        return true;
    });
    if (found)
        target.status = status();
    return found;
}

CmeError Modem::change(Needs needs, const Verb &verb)
{
    Target target;
    CmeError error = find_target(needs, target);
    if (error == CmeError::ok)
        error = verb(target);
    signal_change();
    return error;
}

// An interface that is missing belongs to what the modem can't do, or has gone with the modem.
Reply Modem::call(const Target &target, const char *interface, const char *method, Value arguments,
                  bool secret)
{
    if (!has(target, interface))
        return {CmeError::not_supported, {}, false};
    Reply reply = tree_.bus().call({target.path, interface, method, std::move(arguments), secret});
    if (reply.error == CmeError::not_supported && !has(target, modem))
        return {CmeError::no_connection_to_phone, {}, false};
    const std::string_view name = interface;
    if (reply.error == CmeError::ok && (name == modem || name == modem_3gpp))
        tree_.reload(target.path, interface);
    return reply;
}

bool Modem::has(const Target &target, const char *interface) const
{
    return tree_.read(
        [&](const Objects &objects) { return ModemView(objects, target.path).has(interface); });
}

namespace
{

CmeError supported_if(bool known)
{
    return known ? CmeError::ok : CmeError::not_supported;
}

// "+CGATT: 1"
std::optional<bool> attached_in(const AtAnswer &answer)
{
    for (const std::string &line : answer.lines)
        if (line.starts_with("+CGATT:") && (line.ends_with('0') || line.ends_with('1')))
            return line.ends_with('1');
    return std::nullopt;
}

} // namespace

// ModemManager reads all of it again by itself when it changes.
CmeError Modem::refresh(daemons::StatusPart part)
{
    using enum daemons::StatusPart;
    const bool of_sim = part == pin_counters || part == pin_mode || part == sim;
    return change(of_sim ? Needs::sim : Needs::nothing, [&](const Target &target) {
        if (part == pin_counters)
            return supported_if(target.status.attempts.pin1.has_value());
        if (part == pin_mode)
            return supported_if(target.status.pin_enabled.has_value());
        if (part != packet_domain || target.status.packet_attached)
            return CmeError::ok;
        const AtAnswer answer = at_port_.send("+CGATT?");
        if (answer.error != CmeError::ok)
            return answer.error;
        with_local_state([&](LocalState &local) { local.packet_domain = attached_in(answer); });
        return CmeError::ok;
    });
}

} // namespace modem_manager
