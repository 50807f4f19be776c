// The command "fault": trouble that the router's daemons are to make.
#ifndef CMIF_SIM_FAULTS_FAULT_COMMAND_H
#define CMIF_SIM_FAULTS_FAULT_COMMAND_H

#include "faulty_link.h"
#include "scenario/command.h"

namespace cmif_sim
{

// A side that is left out is null.
struct FaultTargets {
    Channel *at = nullptr;
    Channel *qmi = nullptr;
};

// fault at|qmi|all [CODE] KIND [VALUE] [after EVENT] [next [N] | always]
// fault clear
scenario::Command fault_command(const FaultTargets &targets);

} // namespace cmif_sim

#endif
