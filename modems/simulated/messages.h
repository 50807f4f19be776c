// The store of short messages, and the service centre that keeps what can't be delivered yet.
#ifndef MODEMS_SIMULATED_MESSAGES_H
#define MODEMS_SIMULATED_MESSAGES_H

#include "daemons/modem_status.h"

#include <deque>

namespace simulated
{

using daemons::CmeError;
using daemons::DeleteFlag;
using daemons::Message;

class Messages
{
public:
    static constexpr std::size_t capacity = 255;

    Messages();

    const std::vector<Message> &all() const { return all_; }

    // There are only received messages here: each flag between `one` and `all` deletes those that
    // were read.
    CmeError remove(int index, DeleteFlag flag);

    void mark_all_read();
    void mark_read(int index);

    // Sends a message to the modem: it waits until deliver(), which stores as many as there is
    // room for, each at the lowest free index.
    void send(std::string sender, std::string time, std::string text);
    void deliver();
    std::size_t waiting() const { return waiting_.size(); }
    unsigned delivered() const { return delivered_; } // so far

private:
    std::vector<Message> all_; // in the order of their indices
    std::deque<Message> waiting_;
    unsigned delivered_ = 0;
};

} // namespace simulated

#endif
