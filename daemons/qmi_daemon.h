// The QMI daemon: serves the requests on queue 1158 over the modem, and answers on queue 1159.
#ifndef DAEMONS_QMI_DAEMON_H
#define DAEMONS_QMI_DAEMON_H

#include "daemon_thread.h"
#include "qmi_requests.h"
#include "wire_log.h"

#include <optional>

namespace sim
{

class QmiDaemon
{
public:
    QmiDaemon(Modem &modem, bool verbose);

    // Takes the readiness marker away and ends promptly.
    ~QmiDaemon();
    QmiDaemon(const QmiDaemon &) = delete;
    QmiDaemon &operator=(const QmiDaemon &) = delete;

    // Creates the queues, starts to serve and then says so in the readiness marker; false when the
    // queues or the marker can't be had.
    bool start();

private:
    void serve(const char *bytes, std::size_t payload);
    void reply(long code, const char *name, const QmiAnswer &answer);

    Modem &modem_;
    WireLog log_;
    MessageQueue requests_;
    MessageQueue replies_;
    StopFlag stop_;
    std::optional<DaemonThread> thread_;
};

} // namespace sim

#endif
