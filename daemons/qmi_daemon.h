// The QMI daemon: serves the requests on queue 1158 over the modem, and answers on queue 1159.
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
    QmiDaemon(Modem &modem, Publisher &publisher, StopFlag &stop, bool verbose);

    // Removes the readiness marker, raises the flag, stops the modem and ends promptly.
    ~QmiDaemon();
    QmiDaemon(const QmiDaemon &) = delete;
    QmiDaemon &operator=(const QmiDaemon &) = delete;

    // Creates the queues, starts to serve and then creates the readiness marker; false when the
    // queues or the marker can't be created.
    bool start();

private:
    void serve(const char *bytes, std::size_t payload);
    void reply(long code, const char *name, const QmiAnswer &answer);

    Modem &modem_;
    Publisher &publisher_;
    StopFlag &stop_;
    WireLog log_;
    MessageQueue requests_{CMIF_QMI_REQUEST_KEY};
    MessageQueue replies_{CMIF_QMI_REPLY_KEY};
    std::optional<DaemonThread> thread_;
};

} // namespace daemons

#endif
