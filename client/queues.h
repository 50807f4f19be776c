// The message queues as a client may use them: it looks without taking, and takes only what no
// other process waits for.
#ifndef CLIENT_QUEUES_H
#define CLIENT_QUEUES_H

#include "channel.h"
#include "sent_record.h"
#include "unanswered.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace client
{

// Whether the channel's request queue has been created.
bool queue_exists(Channel channel);

// Whether a record of the channel doesn't fit the queue; how many are queued.
struct Filling {
    bool full = false;
    unsigned long records = 0;
};
Filling filling_of(Channel channel, key_t key);

// The records of a queue, newest first, without taking any. When another process takes one
// meanwhile, the later ones move up: a record may be shown twice, but none that stays is missed.
// A record that a receiver waits for is never queued. False where the kernel can't look (no
// CONFIG_CHECKPOINT_RESTORE).
bool peek(int queue, const std::function<void(long type, std::string_view payload)> &each);

// Takes away the replies of this code from the reply queue, of any size; how many. For the holder
// of the code's lock: no receiver waits for a reply that is queued.
int clear_replies(RequestCode request);

enum class Withdrawal { nothing_sent, withdrawn, taken, answered, kept, queue_gone, unknown };

// Takes the request back, for the holder of the code's lock, if it is the oldest of its code in
// the queue; `kept` when another one, of a caller that was killed, precedes it. The others keep
// their places.
Withdrawal withdraw(RequestCode request, const SentRecord &sent, Unanswered &unanswered);

} // namespace client

#endif
