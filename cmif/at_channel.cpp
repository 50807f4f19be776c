#include "at_channel.h"

#include "store.h"

#include <cstddef>
#include <cstdio>
#include <sys/ipc.h>
#include <sys/msg.h>

static_assert(offsetof(cmif_msg, set_string2) - offsetof(cmif_msg, set_string) == 30);
static_assert(offsetof(cmif_msg, set_string3) - offsetof(cmif_msg, set_string) == 60);
static_assert(offsetof(cmif_msg, set_value) - offsetof(cmif_msg, set_string) == 90);
static_assert(offsetof(cmif_msg, ret_code) - offsetof(cmif_msg, set_string) == 112);
static_assert(offsetof(cmif_msg, set_string) == sizeof(long));
static_assert(sizeof(int) == 4 && (sizeof(long) != 4 || sizeof(cmif_msg) == 120));

namespace cmif
{
namespace
{

constexpr int queue_flags = IPC_CREAT | 0666;

template <typename Value>
void print_if_on(AtSite &site, const Line<Value> &line, Value value)
{
    if (line.empty() || !site.on())
        return;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // checked where the vocabulary is compiled
    std::printf(line.text(), value);
#pragma GCC diagnostic pop
}

int look_up_request_queue(const AtRequest &request, AtSites &sites)
{
    const int queue = msgget(CMIF_AT_REQUEST_KEY, queue_flags);
    if (queue == -1)
        print_if_on(sites.no_request_queue, request.lines.no_request_queue, request.name);
    return queue;
}

bool send(const AtRequest &request, AtSites &sites, int queue, const cmif_msg &record)
{
    if (msgsnd(queue, &record, CMIF_AT_PAYLOAD, 0) == -1) {
        print_if_on(sites.not_sent, request.lines.not_sent, request.name);
        return false;
    }
    print_if_on(sites.sent, request.lines.sent, request.name);
    return true;
}

} // namespace

void AtMessage::trace_type()
{
    print_if_on(sites_.type, request_.lines.type, record.mod_id);
}

void AtMessage::set_text(char *field, const char *text)
{
    const char *end = reinterpret_cast<const char *>(&record) + offsetof(cmif_msg, ret_code);
    copy_text(field, end, text);
}

int cmif_round_trip(const AtRequest &request, AtSites &sites, PrepareFn prepare, bool *answered)
{
    const AtVocabulary &lines = request.lines;

    // Both queues are looked up on every call: a daemon may have re-created them.
    const int request_queue = look_up_request_queue(request, sites);
    if (request_queue == -1)
        return CMIF_NO_QUEUE;
    const int reply_queue = msgget(CMIF_AT_REPLY_KEY, queue_flags);
    if (reply_queue == -1) {
        print_if_on(sites.no_reply_queue, lines.no_reply_queue, request.name);
        return lines.no_reply_queue_result;
    }
    print_if_on(sites.request_queue, lines.request_queue, request_queue);
    print_if_on(sites.reply_queue, lines.reply_queue, reply_queue);

    AtMessage message(request, sites);
    prepare(message);
    if (message.skipped())
        return CMIF_OK;
    if (!send(request, sites, request_queue, message.record))
        return CMIF_SEND_FAILED;

    // Forever and without a pause, until the daemon answers. A failed receive may leave anything in
    // the record's type, so each one asks for the request's own code.
    while (msgrcv(reply_queue, &message.record, CMIF_AT_PAYLOAD, request.code, 0) == -1)
        print_if_on(sites.not_received, lines.not_received, request.name);
    print_if_on(sites.received, lines.received, request.name);
    if (answered)
        *answered = true;
    return message.record.ret_code;
}

int cmif_send_only(const AtRequest &request, AtSites &sites)
{
    const int queue = look_up_request_queue(request, sites);
    if (queue == -1)
        return CMIF_NO_QUEUE;
    print_if_on(sites.request_queue, request.lines.request_queue, queue);

    AtMessage message(request, sites);
    message.trace_type();
    return send(request, sites, queue, message.record) ? CMIF_OK : CMIF_SEND_FAILED;
}

} // namespace cmif
