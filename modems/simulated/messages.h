// The store of short messages.
#ifndef MODEMS_SIMULATED_MESSAGES_H
#define MODEMS_SIMULATED_MESSAGES_H

#include "daemons/ret_code.h"

#include <string>
#include <string_view>
#include <vector>

namespace sim
{

struct Message {
    int index; // its place in the store, kept when others go
    bool unread;
    std::string sender;
    std::string time; // service centre time stamp
    std::string text; // as the sender wrote it, UTF-8
};

class Messages
{
public:
    static constexpr std::size_t capacity = 10;

    Messages();

    const std::vector<Message> &all() const { return all_; }

    // Both numbers as text. Flag 0 deletes that message, 1 to 3 all that were read (there are only
    // received ones here), 4 all.
    RetCode remove(std::string_view index, std::string_view flag);

    // A listing shows new messages as unread once; afterwards they count as read.
    void mark_all_read();

private:
    std::vector<Message> all_;
};

} // namespace sim

#endif
