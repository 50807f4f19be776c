#include "at_modem.h"

#include "cmif-sim/router/serve_commands.h"
#include "daemons/server.h"
#include "modems/at_front/front.h"
#include "modems/at_front/terminal.h"

#include <cstdio>

namespace cmif_sim
{

ServerOptions at_modem_options(ServerOptions options)
{
    options.at = options.qmi = options.store = false;
    const auto answer_faults = std::make_shared<at_front::AnswerFaults>();
    options.answer_faults = answer_faults;
    options.further_commands = [answer_faults](simulated::Modem &) {
        return scenario::Commands{at_front::answer_command(*answer_faults)};
    };
    return options;
}

int serve_at_modem(const ServerOptions &options)
{
    constexpr std::size_t ports = 2;
    const sigset_t signals = daemons::block_termination_signals();
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    const at_front::Front front(simulation.modem(), *options.answer_faults,
                                at_front::terminals(ports));
    simulation.set_ports(front.paths());
    serve_commands(simulation, options, signals, [&front] {
        for (const std::string &path : front.paths())
            std::puts(path.c_str());
        std::fflush(stdout);
    });
    return 0;
}

} // namespace cmif_sim
