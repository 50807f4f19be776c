// What a running router does, for a person and for a program.
#ifndef CMIF_SIM_CONTROL_BOX_STATUS_H
#define CMIF_SIM_CONTROL_BOX_STATUS_H

#include <ctime>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cmif_sim
{

struct DaemonStatus {
    const char *state; // serving, not ready, frozen, ended, left out
    std::optional<pid_t> process{};
    std::vector<std::string> faults{}; // that are armed
};

struct SimulationStatus {
    std::optional<double> pace; // none by a manual clock
    std::optional<double> time; // seconds, by a manual clock
    DaemonStatus at, qmi;
    std::vector<std::string> steps;   // of the scenario, still to come
    std::vector<std::string> ports{}; // of an AT modem, which has no daemons
};

struct ReplayStatus {
    std::size_t recorded, taken, refused; // requests
};

struct BoxStatus {
    std::time_t since;
    std::optional<SimulationStatus> simulation{}; // one of them
    std::optional<ReplayStatus> replay{};
};

std::string text_of(const BoxStatus &status); // some lines
// docs/status.schema.json describes it.
std::string json_of(const BoxStatus &status, pid_t box);

} // namespace cmif_sim

#endif
