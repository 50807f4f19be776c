#include "server.h"

#include "daemons/at_daemon.h"
#include "daemons/qmi_daemon.h"
#include "daemons/server.h"
#include "missing.h"
#include "sandbox/leftovers.h"

#include <csignal>
#include <cstdio>

namespace cmifd
{
namespace
{

using namespace daemons;

int serve_until(const sigset_t &signals, const Options &options)
{
    modem_manager::Modem modem(options.modem);
    if (const std::string failure = modem.start(); !failure.empty()) {
        print_missing_bus(failure);
        return 1;
    }
    if (!print_what_is_missing(modem, options.modem.device))
        std::fputs("  The daemons serve without a modem until there is one.\n", stderr);
    Publisher publisher(modem);
    StopFlag stop;
    QueueLink at_link(CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY);
    QueueLink qmi_link(CMIF_QMI_REQUEST_KEY, CMIF_QMI_REPLY_KEY);
    AtDaemon at(modem, publisher, at_link, stop, options.modem.verbose);
    QmiDaemon qmi(modem, publisher, qmi_link, stop, options.modem.verbose);
    if (!at.start() || !qmi.start())
        return 1;
    int received = 0;
    sigwait(&signals, &received);
    return 0;
}

} // namespace

int serve(const Options &options)
{
    Server server;
    const auto signals = server.start(sandbox::at_service_lock, sandbox::qmi_service_lock);
    return signals ? serve_until(*signals, options) : 1;
}

} // namespace cmifd
