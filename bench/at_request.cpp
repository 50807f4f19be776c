#include "cmif/cmif.h"
#include "measure.h"

#include <sys/ipc.h>
#include <sys/msg.h>

namespace bench
{
namespace
{

constexpr int flags = IPC_CREAT | 0666;

void serve()
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, flags);
    const int replies = msgget(CMIF_AT_REPLY_KEY, flags);
    cmif_msg record{};
    while (msgrcv(requests, &record, CMIF_AT_PAYLOAD, 0, 0) != -1)
        if (record.mod_id != CMIF_AT_DOWNLOAD_MODE)
            msgsnd(replies, &record, CMIF_AT_PAYLOAD, 0);
}

void by_hand()
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, flags);
    const int replies = msgget(CMIF_AT_REPLY_KEY, flags);
    cmif_msg record{};
    record.mod_id = CMIF_AT_SET_TIME_ZONE;
    msgsnd(requests, &record, CMIF_AT_PAYLOAD, 0);
    msgrcv(replies, &record, CMIF_AT_PAYLOAD, CMIF_AT_SET_TIME_ZONE, 0);
}

} // namespace

bool at_request()
{
    const Daemon daemon(serve);
    bool good = compare("AT request", 1000, 1.03, by_hand, [] { shared_CMIF_set_timezone(); });
    const int calls = system_calls([] { shared_CMIF_set_timezone(); });
    const int one_way = system_calls([] { shared_CMIF_set_AT_qfirehose(); });
    good = expect_count("  its system calls", calls, 4) && good;
    return expect_count("  system calls, send only", one_way, 2) && good;
}

} // namespace bench
