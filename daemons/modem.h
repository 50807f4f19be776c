// What the daemons ask of a modem. They know queues, records and the configuration store, which a
// modem does not. It does know what a request needs (a SIM, the radio, a network) and how long that
// takes.
#ifndef DAEMONS_MODEM_H
#define DAEMONS_MODEM_H

#include "modem_status.h"

#include <functional>
#include <string_view>

namespace daemons
{

// What a query has the modem read again, where its snapshot may be out of date.
enum class StatusPart { pin_counters, pin_mode, packet_domain, revision, sim, packet_service };

// Every verb may be called from several threads and blocks: it returns when the modem's answer is
// in and status() shows it. What a modem can't do is not_supported, never a silent success.
class Modem
{
public:
    virtual ~Modem() = default;

    virtual ModemStatus status() const = 0;
    virtual CmeError refresh(StatusPart part) = 0;

    // `changed` is called after any change, from any thread; it may call status(), but no verb. An
    // empty function ends that; when watch() returns, the previous function is not running.
    virtual void watch(std::function<void()> changed) = 0;

    // Ends the modem's work: every verb in progress returns soon, and no new one begins. A verb
    // that was cut short or did not begin returns no_connection_to_phone.
    virtual void stop() = 0;

    // The SIM. A malformed code is incorrect_parameters and costs no attempt.
    virtual CmeError enter_pin(std::string_view pin) = 0;
    virtual CmeError enter_puk(std::string_view puk, std::string_view new_pin) = 0;
    virtual CmeError change_pin(std::string_view old_pin, std::string_view new_pin) = 0;
    virtual CmeError set_pin_enabled(bool enabled, std::string_view pin) = 0;

    // Binds the modem to the SIMs of one network; "" is the network of the SIM that is in.
    virtual CmeError lock_network(std::string_view plmn, std::string_view key) = 0;
    virtual CmeError unlock_network(std::string_view key) = 0;

    // The network. No technology is any.
    virtual CmeError set_search_mode(SearchMode mode) = 0;
    virtual CmeError select_operator(std::string_view plmn,
                                     std::optional<Technology> technology) = 0;
    virtual CmeError select_automatically() = 0;
    virtual CmeError search(std::vector<Operator> &found) = 0; // may take minutes
    virtual CmeError set_roaming(Roaming roaming) = 0;
    virtual CmeError set_packet_domain(bool on) = 0;

    // The modem itself.
    virtual CmeError set_functionality(int level) = 0;     // 3GPP TS 27.007 <fun>
    virtual CmeError set_time_zone(int quarter_hours) = 0; // east of UTC
    virtual CmeError factory_reset() = 0;

    // Messages. A listing shows new messages as unread once; from then on they count as read.
    virtual CmeError list_messages() = 0;
    virtual CmeError delete_messages(int index, DeleteFlag flag) = 0;

    // The modem's own profiles, by number. Device management may change them; what status() shows
    // of them then follows with the next synchronization.
    virtual CmeError set_profile(int number, const PdpProfile &profile) = 0;
    virtual CmeError synchronize_profile() = 0;
    virtual CmeError start_device_management() = 0;

    // The data connection. A connection that is up is made again with a new profile.
    virtual CmeError set_data_profile(const DataProfile &profile) = 0;
    virtual CmeError connect() = 0; // begins; status() shows how it goes
    virtual CmeError disconnect() = 0;

    // Connects once, as soon as that is possible; a disconnect() calls it off.
    virtual CmeError connect_when_possible() = 0;
};

} // namespace daemons

#endif
