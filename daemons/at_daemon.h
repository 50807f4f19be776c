// The AT daemon: serves the requests of its channel over the modem, and answers them.
#ifndef DAEMONS_AT_DAEMON_H
#define DAEMONS_AT_DAEMON_H

#include "at_requests.h"
#include "cmif/cmif.h"
#include "daemon_thread.h"
#include "lane.h"
#include "wire_log.h"

#include <optional>

namespace daemons
{

// Two lanes, so that a search never delays a PIN: the fast one is the thread that receives, which
// leaves waiting requests in the link; the slow one keeps its own.
class AtDaemon
{
public:
    AtDaemon(Modem &modem, Publisher &publisher, Link &link, StopFlag &stop, bool verbose);

    // Raises the flag, stops the modem and ends promptly. What this cuts short is not answered.
    ~AtDaemon();
    AtDaemon(const AtDaemon &) = delete;
    AtDaemon &operator=(const AtDaemon &) = delete;

    // Prepares the link and starts to serve; false when the link can't be used.
    bool start();

private:
    void receive(const char *bytes, std::size_t payload);
    void dispatch(const AtRequest &request, const cmif_msg &record);
    void queue(const AtJob &job);
    void serve(const AtJob &job);
    void reply(long code, const char *name, CmeError error);

    AtFront front_;
    StopFlag &stop_;
    WireLog log_;
    Link &link_;
    Lane slow_lane_;
    std::optional<DaemonThread> fast_lane_;
};

} // namespace daemons

#endif
