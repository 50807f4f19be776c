// A modem that ModemManager drives, for the daemons.
#ifndef MODEMS_MODEMMANAGER_MODEM_H
#define MODEMS_MODEMMANAGER_MODEM_H

#include "addresses.h"
#include "at_port.h"
#include "daemons/modem.h"
#include "data_connection.h"
#include "local_state.h"
#include "object_tree.h"
#include "status.h"
#include "timer_thread.h"

namespace modem_manager
{

using daemons::ModemStatus;

struct Options {
    std::string bus;            // its D-Bus address; "" is the system bus
    std::string device;         // its path in /sys; "" is the first modem that is found
    std::string at_port;        // for what ModemManager has no way to do; "" is none
    bool apply_address = false; // set static addresses of a connection on its interface
    bool verbose = false;

    // For so long a modem that is gone keeps its last status: it leaves ModemManager for a moment
    // when its SIM is unlocked or blocked.
    std::chrono::milliseconds grace = std::chrono::seconds(8);
    std::chrono::seconds refresh = std::chrono::seconds(5); // of signal levels and uptime
};

// Prerequisites of a verb.
enum class Needs { nothing, sim, unlocked_sim, radio, network };

enum class Presence { found, no_modem, no_manager, no_permission };

// Enables the modem, unless it has been switched off by set_functionality(), and asks ModemManager
// for signal levels and the serving cell. It never sends a PIN that no verb has brought.
class Modem final : public daemons::Modem
{
public:
    explicit Modem(Options options);
    ~Modem() override;
    Modem(const Modem &) = delete;
    Modem &operator=(const Modem &) = delete;

    // Connects to the bus; "", or why that failed.
    std::string start();

    const ObjectTree &tree() const { return tree_; }
    const AtPort &at_port() const { return at_port_; }
    std::string path() const; // of the modem's object, "" without one
    Presence presence() const;

    ModemStatus status() const override;
    CmeError refresh(daemons::StatusPart part) override;
    void watch(std::function<void()> changed) override;
    void stop() override;

    CmeError enter_pin(std::string_view pin) override;
    CmeError enter_puk(std::string_view puk, std::string_view new_pin) override;
    CmeError change_pin(std::string_view old_pin, std::string_view new_pin) override;
    CmeError set_pin_enabled(bool enabled, std::string_view pin) override;
    CmeError lock_network(std::string_view plmn, std::string_view key) override;
    CmeError unlock_network(std::string_view key) override;
    CmeError set_search_mode(daemons::SearchMode mode) override;
    CmeError select_operator(std::string_view plmn,
                             std::optional<daemons::Technology> technology) override;
    CmeError select_automatically() override;
    CmeError search(std::vector<daemons::Operator> &found) override;
    CmeError set_roaming(daemons::Roaming roaming) override;
    CmeError set_packet_domain(bool on) override;
    CmeError set_functionality(int level) override;
    CmeError set_time_zone(int quarter_hours) override;
    CmeError factory_reset() override;
    CmeError list_messages() override;
    CmeError delete_messages(int index, daemons::DeleteFlag flag) override;
    CmeError set_profile(int number, const daemons::PdpProfile &profile) override;
    CmeError synchronize_profile() override;
    CmeError start_device_management() override;
    CmeError set_data_profile(const daemons::DataProfile &profile) override;
    CmeError connect() override;
    CmeError disconnect() override;
    CmeError connect_when_possible() override;

private:
    class Store; // of messages

    // The modem as it was when a verb began.
    struct Target {
        std::string path, sim;
        ModemStatus status;
        int state = 0;
    };
    using Verb = std::function<CmeError(const Target &)>;

    // Waits for a modem that is gone for a moment, checks the needs, runs the verb and signals.
    CmeError change(Needs needs, const Verb &verb);
    CmeError find_target(Needs needs, Target &target);
    bool find_settled(Target &target);
    CmeError refusal(Needs needs, const ModemStatus &status, int state) const;

    Reply call(const Target &target, const char *interface, const char *method,
               Value arguments = {}, bool secret = false);
    CmeError sim_call(const Target &target, const char *method, Value arguments);
    CmeError power_down(const Target &target);
    CmeError power_up(const Target &target);
    bool has(const Target &target, const char *interface) const;
    template <class Condition>
    bool wait_for(std::chrono::milliseconds limit, const Condition &condition);
    template <class Action>
    void with_local_state(const Action &action);

    // What happens to the modem (modem_events.cpp).
    void objects_changed();
    void signal_change();
    void note_connection(const ModemView &view) const;
    std::optional<Time> pass_time();
    void apply_addresses();
    std::string device() const;

    // What the modem is asked for by itself (modem_upkeep.cpp).
    std::optional<Time> look_after();
    std::vector<std::pair<std::string, Call>> due_calls(const ModemView &view) const;
    void try_once(const std::string &what, const Call &call);
    void read_cell();
    void guard_connection();

    // The data connection (modem_data.cpp).
    bool is_up() const;
    CmeError data_refusal(const ModemStatus &status, int state) const;
    void dial();
    void hang_up();

    const Options options_;
    mutable std::mutex mutex_; // of all below, up to the next comment
    mutable LocalState local_state_;
    std::string path_, first_device_;
    std::optional<Time> lost_at_; // while the modem is gone, or not settled
    mutable ModemStatus last_;
    // Of the objects that the last status was read from; none once something else changes.
    mutable std::optional<unsigned> last_version_;
    mutable bool connected_ = false;
    bool auto_connect_ = false, has_profile_ = false, stopped_ = false;
    bool given_up_ = false;       // it did not come back within the grace
    std::set<std::string> tried_; // by upkeep, for this modem
    std::string cell_read_;

    std::mutex watch_mutex_;
    std::function<void()> changed_;
    AtPort at_port_;
    Addresses addresses_; // the clock's alone
    mutable ObjectTree tree_;

    // Threads: destroyed first.
    DataConnection connection_;
    TimerThread clock_, upkeep_;
};

template <class Condition>
bool Modem::wait_for(std::chrono::milliseconds limit, const Condition &condition)
{
    return tree_.wait(limit, [&, device = device()](const Objects &objects) {
        const ModemView view(objects, find_modem(objects, device));
        return view.settled() && condition(view);
    });
}

template <class Action>
void Modem::with_local_state(const Action &action)
{
    const std::lock_guard lock(mutex_);
    action(local_state_);
    last_version_.reset();
}

} // namespace modem_manager

#endif
