// The simulated modem and the daemons, over the message queues of the namespace they are started
// in.
#ifndef CMIF_SIM_ROUTER_ROUTER_H
#define CMIF_SIM_ROUTER_ROUTER_H

#include "cmif-record/reader.h"
#include "cmif-record/recording.h"
#include "scenario/command.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace at_front
{
class AnswerFaults;
}
namespace simulated
{
class Modem;
}

namespace cmif_sim
{

struct ServerOptions {
    bool verbose = false; // print each record on standard error
    bool at = true;       // run the AT daemon
    bool qmi = true;      // run the QMI daemon
    bool store = true;    // publish what the modem does in the configuration store
    double pace = 1.0;    // factor on all simulated durations
    unsigned seed = 1;    // of the drifting signal

    bool manual_clock = false; // time stops until the command "advance"
    std::string state;         // the modem's at the start, as the command "state" has it
    std::string scenario_name; // for messages
    std::string scenario;      // its text

    // What else can happen to the modem, as it is connected to a computer.
    std::function<scenario::Commands(simulated::Modem &modem)> further_commands{};

    // What goes wrong with the answers on AT ports.
    std::shared_ptr<at_front::AnswerFaults> answer_faults{};

    // Called with the name of each event (modems/simulated/situation.h).
    std::function<void(std::string_view event)> happened{};

    // The socket on which the program that started this router takes commands for it: a file that
    // listens, or -1, and its path.
    int control = -1;
    const char *control_path = "";

    std::shared_ptr<cmif_record::Recording> record{}; // of what the daemons exchange and set
    std::shared_ptr<const cmif_record::RecordingContents> replay{}; // instead of the daemons
};

// Serves until SIGTERM or SIGINT and returns the exit status: 0, or 1 when it can't start. Writes
// one byte to `ready_fd`, unless that is negative, when all daemons answer.
int serve(const ServerOptions &options, int ready_fd);

} // namespace cmif_sim

#endif
