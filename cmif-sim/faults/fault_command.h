// The command "fault": faults that the router's daemons are to show.
#ifndef CMIF_SIM_FAULTS_FAULT_COMMAND_H
#define CMIF_SIM_FAULTS_FAULT_COMMAND_H

#include "faulty_link.h"
#include "scenario/command.h"

namespace cmif_sim
{

// A daemon that is left out has none.
struct FaultTargets {
    FaultyLink *at = nullptr;
    FaultyLink *qmi = nullptr;
};

// fault at|qmi|all [CODE] KIND [VALUE] [after EVENT] [next [N] | always]
// fault clear
scenario::Command fault_command(const FaultTargets &targets);

} // namespace cmif_sim

#endif
