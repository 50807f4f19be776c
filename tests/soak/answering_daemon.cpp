#include "answering_daemon.h"

#include "cmif/cmif.h"
#include "soak.h"

#include <cstdio>
#include <cstring>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <unistd.h>

namespace soak
{
namespace
{

using client::Channel;

constexpr int flags = IPC_CREAT | 0666;

struct Record {
    long type;
    char payload[CMIF_QMI_PAYLOAD];
};

// Over the field of the AT record, and at the beginning of the QMI record, as the real daemons do.
void put_number(Channel channel, Record &record, int number)
{
    const std::size_t offset =
        channel == Channel::at ? offsetof(cmif_msg, ret_code) - offsetof(cmif_msg, set_string) : 0;
    std::memcpy(record.payload + offset, &number, sizeof number);
}

// In one of the text fields.
Request request_in(const Record &record)
{
    for (const std::size_t offset :
         {offsetof(cmif_msg, set_string), offsetof(cmif_msg, set_string2)}) {
        Request request;
        const char *text = record.payload + offset - offsetof(cmif_msg, set_string);
        if (std::sscanf(text, "%d %d %d", &request.number, &request.before_ms, &request.after_ms) ==
            3)
            return request;
    }
    return {};
}

} // namespace

std::string Request::text() const
{
    return std::to_string(number) + " " + std::to_string(before_ms) + " " +
           std::to_string(after_ms);
}

void create_queues(Channel channel)
{
    msgget(client::request_key(channel), flags);
    msgget(client::reply_key(channel), flags);
}

void answer_all(Channel channel)
{
    const std::size_t size = channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD;
    const int requests = msgget(client::request_key(channel), flags);
    const int replies = msgget(client::reply_key(channel), flags);
    Record record{};
    while (msgrcv(requests, &record, size, 0, 0) != -1) {
        const Request request = request_in(record);
        put_number(channel, record, request.number);
        pause_ms(request.before_ms);
        msgsnd(replies, &record, size, 0);
        pause_ms(request.after_ms);
    }
    _exit(1);
}

} // namespace soak
