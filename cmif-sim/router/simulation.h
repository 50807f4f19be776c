// The simulated router: the modem, the daemons over it, their faults, and a scenario.
#ifndef CMIF_SIM_ROUTER_SIMULATION_H
#define CMIF_SIM_ROUTER_SIMULATION_H

#include "cmif-sim/faults/faulty_link.h"
#include "daemons/at_daemon.h"
#include "daemons/qmi_daemon.h"
#include "modems/simulated/modem.h"
#include "router.h"
#include "scenario/manual_clock.h"
#include "scenario/timeline.h"

#include <ctime>
#include <memory>
#include <optional>

namespace cmif_sim
{

class Simulation
{
public:
    // Fails with a BadScript if the scenario is wrong.
    explicit Simulation(const ServerOptions &options);
    ~Simulation();
    Simulation(const Simulation &) = delete;
    Simulation &operator=(const Simulation &) = delete;

    // Starts the daemons, brings the modem to its first state and begins the scenario; false, and a
    // line on standard error, when a daemon can't be started.
    bool start();

    simulated::Modem &modem() { return modem_; }
    const scenario::Commands &commands() const { return commands_; }
    // Of an AT modem, for the status. Before commands are served.
    void set_ports(std::vector<std::string> ports) { ports_ = std::move(ports); }
    BoxStatus status() const;

private:
    bool start_daemons();
    void event(std::string_view name);

    const ServerOptions &options_;
    std::time_t since_ = std::time(nullptr);
    std::vector<std::string> ports_;
    std::unique_ptr<scenario::Clock> clock_;
    simulated::Modem modem_;
    FaultyLink at_link_, qmi_link_;
    scenario::Commands commands_; // of a scenario, and `advance`
    scenario::Timeline timeline_;
    daemons::StopFlag stop_;
    std::optional<daemons::Publisher> publisher_; // from the start
    std::optional<daemons::AtDaemon> at_;
    std::optional<daemons::QmiDaemon> qmi_;
};

// Fails with a BadScript if the scenario is wrong.
void check_scenario(const ServerOptions &options);

// For completion: the words that may follow such a beginning of a command.
std::vector<scenario::Words::Offer> what_may_follow(const std::string &line,
                                                    const ServerOptions &options);

} // namespace cmif_sim

#endif
