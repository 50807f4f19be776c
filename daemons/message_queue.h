// One System V message queue of the router, as a daemon uses it.
#ifndef DAEMONS_MESSAGE_QUEUE_H
#define DAEMONS_MESSAGE_QUEUE_H

#include "stop_flag.h"

#include <optional>
#include <sys/types.h>

namespace daemons
{

class MessageQueue
{
public:
    // How long a reply waits for room in a full queue.
    static constexpr std::chrono::milliseconds max_wait{1000};

    explicit MessageQueue(key_t key) : key_(key) {}

    // Creates the queue if it is missing; false, and a line on standard error, when that fails.
    bool prepare() const;

    // Removes all messages in it.
    void clear() const;

    // Waits for a message of any type and takes it. `record` is a `long` and room for `room` bytes;
    // a longer payload is cut. Nothing when a signal came, or the queue was missing or removed.
    std::optional<std::size_t> receive(void *record, std::size_t room) const;

    // Puts a record (its type, a `long`, and the payload) in the queue. A full queue is waited for,
    // up to `max_wait` and until `stop` is raised; then the record is dropped, and false. Without
    // `stop`, a line on standard error names it.
    bool send(const void *record, std::size_t payload, const StopFlag &stop) const;

private:
    int look_up() const;
    void report_dropped(const void *record, const char *reason) const;

    key_t key_;
};

} // namespace daemons

#endif
