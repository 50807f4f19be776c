// The store of short messages.
#ifndef MODEMS_SIMULATED_MESSAGES_H
#define MODEMS_SIMULATED_MESSAGES_H

#include "daemons/modem_status.h"

namespace simulated
{

using daemons::CmeError;
using daemons::DeleteFlag;
using daemons::Message;

class Messages
{
public:
    static constexpr std::size_t capacity = 10;

    Messages();

    const std::vector<Message> &all() const { return all_; }

    // There are only received messages here: each flag between `one` and `all` deletes those that
    // were read.
    CmeError remove(int index, DeleteFlag flag);

    void mark_all_read();

private:
    std::vector<Message> all_;
};

} // namespace simulated

#endif
