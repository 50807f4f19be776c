// How the records of one channel reach a daemon and leave it.
#ifndef DAEMONS_LINK_H
#define DAEMONS_LINK_H

#include "message_queue.h"

#include <memory>
#include <optional>

namespace daemons
{

// A record is a `long`, its request code, and the payload.
class Link
{
public:
    virtual ~Link() = default;

    // Creates the queues and removes replies whose callers have gone: they would pass for answers
    // to the next requests. False, and a line on standard error, when that fails.
    virtual bool prepare() = 0;

    // Waits for a request and takes it; the size of its payload, which is cut to `room` bytes. May
    // return nothing early, and does so after a signal.
    virtual std::optional<std::size_t> receive(void *record, std::size_t room) = 0;

    // Held by a thread while it serves a request.
    virtual std::shared_ptr<void> work() { return nullptr; }

    // Sends a reply; false when it was dropped. Any thread may call. Gives up once `stop` is
    // raised.
    virtual bool send(const void *record, std::size_t payload, const StopFlag &stop) = 0;
};

// The channel's two message queues.
class QueueLink final : public Link
{
public:
    QueueLink(key_t requests, key_t replies) : requests_(requests), replies_(replies) {}

    bool prepare() override
    {
        if (!requests_.prepare() || !replies_.prepare())
            return false;
        replies_.clear();
        return true;
    }
    std::optional<std::size_t> receive(void *record, std::size_t room) override
    {
        return requests_.receive(record, room);
    }
    bool send(const void *record, std::size_t payload, const StopFlag &stop) override
    {
        return replies_.send(record, payload, stop);
    }

private:
    MessageQueue requests_, replies_;
};

} // namespace daemons

#endif
