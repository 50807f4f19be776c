// One System V message queue of the router, as a daemon uses it.
#ifndef DAEMONS_MESSAGE_QUEUE_H
#define DAEMONS_MESSAGE_QUEUE_H

#include "stop_flag.h"

#include <optional>
#include <sys/types.h>

namespace sim
{

class MessageQueue
{
public:
    explicit MessageQueue(key_t key) : key_(key) {}

    // Creates the queue if it is missing; false, and a line on standard error, when that fails.
    bool prepare() const;

    // Takes away what lies in it.
    void clear() const;

    // Waits for a message of any type and takes it. `record` is a `long` and room for `room` bytes;
    // a longer payload is cut. Nothing when a signal came, or the queue was missing or removed.
    std::optional<std::size_t> receive(void *record, std::size_t room) const;

    // Puts a record in the queue, waiting while it is full; false when `stop` was raised first.
    bool send(const void *record, std::size_t payload, const StopFlag &stop) const;

private:
    int look_up() const;

    key_t key_;
};

} // namespace sim

#endif
