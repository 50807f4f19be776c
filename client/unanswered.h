// Requests that were sent and whose replies have not been taken yet, in memory that the programs of
// one system share.
//
// A caller that gives up leaves a reply that is still to come. It would be taken for the answer to
// the next request of the same code, so the next caller waits for it first.
//
// Each step errs on the safe side: up before a send, down after a record was taken from a queue. No
// step of the kernel does both, so SIGKILL between the two leaves a count that is one too high,
// never too low: calls of this code then send nothing until forget_lost() drops it. Other signals
// that end the caller wait until both are done.
#ifndef CLIENT_UNANSWERED_H
#define CLIENT_UNANSWERED_H

#include "channel.h"

namespace client
{

class Unanswered
{
public:
    // Attaches the shared table; makes it when it is missing. Throws a Failure.
    Unanswered();
    ~Unanswered();
    Unanswered(const Unanswered &) = delete;
    Unanswered &operator=(const Unanswered &) = delete;

    // For the holder of the code's lock and its children.
    int count(RequestCode request) const;
    bool is_awaited(RequestCode request) const; // unanswered, and still to be answered
    double age(RequestCode request) const;      // seconds since the oldest one was sent
    void add(RequestCode request);
    void remove(RequestCode request, int replies = 1);

    // Forgets what can't be answered any more: the request queue was made again, the daemon that
    // served it has ended or was restarted, or more than `max_wait` has passed.
    void forget_lost(RequestCode request);
    static constexpr double max_wait = 600; // seconds; the longest search takes 300

    // Before a client takes something off a request queue, which hides the daemon's own last look.
    // For the holder of the channel's WithdrawalLock.
    void note_withdrawal(Channel channel);

    // The process that last took a request, other than a withdrawal; 0 when that isn't known.
    pid_t daemon_of(Channel channel) const;

private:
    struct Table;

    bool is_lost(RequestCode request) const;

    Table *table_;
};

} // namespace client

#endif
