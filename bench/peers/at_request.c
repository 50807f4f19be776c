/* An AT request of the library, and a daemon that answers it at once. */
#include "cmif/cmif.h"
#include "peer.h"

#include <sys/ipc.h>
#include <sys/msg.h>

static void serve(void)
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
    const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
    struct cmif_msg record;
    ready();
    while (msgrcv(requests, &record, CMIF_AT_PAYLOAD, 0, 0) != -1)
        msgsnd(replies, &record, CMIF_AT_PAYLOAD, 0);
}

const struct Peer peer = {.serve = serve, .call = shared_CMIF_set_timezone};
