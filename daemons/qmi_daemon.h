// The QMI daemon: serves the requests of its channel over the modem, and answers them.
#ifndef DAEMONS_QMI_DAEMON_H
#define DAEMONS_QMI_DAEMON_H

#include "daemon_thread.h"
#include "daemons/publish/publisher.h"
#include "qmi_requests.h"
#include "wire_log.h"

#include <optional>

namespace daemons
{

class QmiDaemon
{
public:
    QmiDaemon(Modem &modem, Publisher &publisher, Link &link, StopFlag &stop, bool verbose);

    // Removes the readiness marker, raises the flag, stops the modem and ends promptly.
    ~QmiDaemon();
    QmiDaemon(const QmiDaemon &) = delete;
    QmiDaemon &operator=(const QmiDaemon &) = delete;

    // Prepares the link, starts to serve and then creates the readiness marker; false when the link
    // can't be used or the marker can't be created.
    bool start();

private:
    void serve(const char *bytes, std::size_t payload);
    void reply(long code, const char *name, const QmiAnswer &answer);

    Modem &modem_;
    Publisher &publisher_;
    StopFlag &stop_;
    WireLog log_;
    Link &link_;
    std::optional<DaemonThread> thread_;
};

} // namespace daemons

#endif
