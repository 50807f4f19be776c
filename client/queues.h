// The message queues as a client may treat them: looked at without taking anything, and only ever
// relieved of what is known to be waited for by no other process.
#ifndef CLIENT_QUEUES_H
#define CLIENT_QUEUES_H

#include "channel.h"
#include "sent_record.h"
#include "unanswered.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace client
{

// Whether the channel's request queue has been created.
bool queue_exists(Channel channel);

// Whether a record of the channel doesn't fit the queue; how many lie in it.
struct Filling {
    bool full = false;
    unsigned long records = 0;
};
Filling filling_of(Channel channel, key_t key);

// The records that lie in a queue, newest first, without taking any. When another process takes one
// meanwhile, the later ones move up: a record may be shown twice, but none that stays is missed.
// Records that a receiver waits for never lie there. False where the kernel can't look (no
// CONFIG_CHECKPOINT_RESTORE).
bool peek(int queue, const std::function<void(long type, std::string_view payload)> &each);

// Takes away the replies of this code that lie in the reply queue, of any size; how many. For the
// holder of the code's lock: a reply that lies there has no receiver waiting for it.
int clear_replies(RequestCode request);

enum class Withdrawal { nothing_sent, withdrawn, taken, answered, kept, queue_gone, unknown };

// Takes the request back, for the holder of the code's lock, if it is the oldest of its code in
// the queue; `kept` when another one, of a caller that was killed, lies before it. The others keep
// their places.
Withdrawal withdraw(RequestCode request, const SentRecord &sent, Unanswered &unanswered);

} // namespace client

#endif
