#include "daemon.h"

#include "cmif/cmif.h"

#include <csignal>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{

void serve_at_requests()
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, queue_flags);
    const int replies = msgget(CMIF_AT_REPLY_KEY, queue_flags);
    cmif_msg record{};
    while (msgrcv(requests, &record, CMIF_AT_PAYLOAD, 0, 0) != -1)
        if (record.mod_id != CMIF_AT_DOWNLOAD_MODE)
            msgsnd(replies, &record, CMIF_AT_PAYLOAD, 0);
}

void serve_qmi_calls()
{
    const int requests = msgget(CMIF_QMI_REQUEST_KEY, queue_flags);
    const int replies = msgget(CMIF_QMI_REPLY_KEY, queue_flags);
    qmi_msg record{};
    while (msgrcv(requests, &record, CMIF_QMI_PAYLOAD, 0, 0) != -1)
        msgsnd(replies, &record, CMIF_QMI_PAYLOAD, 0);
}

Daemon::Daemon(void (*serve)()) : child_(fork())
{
    if (child_ != 0)
        return;
    serve();
    _exit(1);
}

Daemon::~Daemon()
{
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

void at_request_by_hand(int code)
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, queue_flags);
    const int replies = msgget(CMIF_AT_REPLY_KEY, queue_flags);
    cmif_msg record{};
    record.mod_id = code;
    msgsnd(requests, &record, CMIF_AT_PAYLOAD, 0);
    msgrcv(replies, &record, CMIF_AT_PAYLOAD, code, 0);
}

} // namespace bench
