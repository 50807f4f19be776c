#include "mailbox.h"

#include "at_request.h"
#include "bytes.h"
#include "queue_pair.h"

#include <cstring>

void Mailbox::fill()
{
    memset(messages.data(), noise, messages.size() * sizeof messages[0]);
}

bool Mailbox::is_untouched(size_t index) const
{
    return bytes_of(messages.at(index)) == std::string(sizeof messages[0], char{noise});
}

std::string message_key(const char *field, int number)
{
    return std::string("lte_mobile_sms_") + field + "_" + std::to_string(number);
}

Recorded read_messages(cmif_sms_info *messages, int *count, int *unreads, int ret_code)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(18, at_reply(ret_code));
    return record([&] { return shared_CMIF_get_mobileSMSInfo(messages, count, unreads); });
}

Recorded read_messages(Mailbox &box)
{
    return read_messages(box.messages.data(), &box.count, &box.unreads);
}
