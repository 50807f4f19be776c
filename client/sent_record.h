// What a call really sends: its record, as the library hands it to the system.
//
// The program's own msgsnd and msgrcv are linked before the C library's and call them. In a child
// that runs a call they note the record in memory that the parent shares, and keep count of the
// replies that are still to come. Everywhere else they only pass on.
#ifndef CLIENT_SENT_RECORD_H
#define CLIENT_SENT_RECORD_H

#include "channel.h"
#include "unanswered.h"

#include <cstddef>
#include <vector>

namespace client
{

// Shared by a parent and the child that makes the call; gone from memory, secrets too, at the end.
class SentRecord
{
public:
    static constexpr std::size_t max_payload = 512; // the largest record of both channels has 312

    SentRecord();
    ~SentRecord();
    SentRecord(const SentRecord &) = delete;
    SentRecord &operator=(const SentRecord &) = delete;

    // In the child, before the call: from now on its sends and receives of these requests, one
    // after another, are noted. `unanswered` is null for a request that is never answered.
    void watch(std::vector<RequestCode> requests, Unanswered *unanswered);

    enum class State { not_sent, sending, sent, answered };
    State state() const { return shared_->state; }
    pid_t sender() const { return shared_->sender; }
    RequestCode request() const { return shared_->request; } // the last one that was sent
    bool is_first() const { return shared_->is_first; }      // no earlier one was answered
    int queue() const { return shared_->queue; }
    std::size_t size() const { return shared_->size; }
    const char *payload() const { return shared_->payload; }

private:
    friend struct Hooks;

    struct Shared {
        volatile State state;
        pid_t sender;
        RequestCode request;
        bool is_first;
        int queue;
        std::size_t size;
        char payload[max_payload];
    };
    Shared *shared_;
};

} // namespace client

#endif
