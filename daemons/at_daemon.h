// The AT daemon: serves the requests on queue 899 over the modem, and answers on queue 900.
#ifndef DAEMONS_AT_DAEMON_H
#define DAEMONS_AT_DAEMON_H

#include "at_requests.h"
#include "cmif/cmif.h"
#include "daemon_thread.h"
#include "wire_log.h"

#include <optional>
#include <thread>

namespace sim
{

class AtDaemon
{
public:
    AtDaemon(Modem &modem, Pace pace, bool verbose);

    // Ends promptly; a search that runs is broken off and not answered.
    ~AtDaemon();
    AtDaemon(const AtDaemon &) = delete;
    AtDaemon &operator=(const AtDaemon &) = delete;

    // Creates the queues and starts to serve; false when the queues can't be had.
    bool start();

private:
    void serve(const char *bytes, std::size_t payload);
    void serve(const AtRequest &request, const cmif_msg &record);
    void reply(long code, const char *name, int ret_code);
    void join_search(const AtRequest &request);
    void search(const AtRequest &request);

    Modem &modem_;
    Pace pace_;
    WireLog log_;
    MessageQueue requests_{CMIF_AT_REQUEST_KEY};
    MessageQueue replies_{CMIF_AT_REPLY_KEY};
    StopFlag stop_;
    int searchers_ = 0; // callers that wait for the search; for the holder of the modem's lock
    std::thread search_;
    std::optional<DaemonThread> thread_;
};

} // namespace sim

#endif
