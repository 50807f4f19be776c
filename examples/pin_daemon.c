/* The smallest AT daemon: it answers one request, that for the PIN attempts left, and refuses
 * others.
 *
 *     cc -std=c99 pin_daemon.c -ltarn_nvram_config */
#define _DEFAULT_SOURCE
#include <cmif.h>
#include <stdio.h>
#include <string.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <tarn_nvram_config.h>
#include <unistd.h>

#define NOT_SUPPORTED 4 /* as in a modem's +CME ERROR */

/* What belongs to a reply is in the store before the reply is sent. */
static int publish_counters(void)
{
    tarnNvramConfig_set("lte_mobile_pin1c", "3");
    tarnNvramConfig_set("lte_mobile_puk1c", "10");
    tarnNvramConfig_set("lte_mobile_pin2c", "3");
    tarnNvramConfig_set("lte_mobile_puk2c", "10");
    return CMIF_OK;
}

/* A full queue must not stop the daemon: callers may have gone without taking their replies. */
static void reply(int queue, long code, int result)
{
    struct cmif_msg record;
    int attempts;

    memset(&record, 0, sizeof record); /* nothing of the request: it may hold a PIN */
    record.mod_id = code;
    record.ret_code = result;
    for (attempts = 0; attempts < 10; ++attempts) {
        if (msgsnd(queue, &record, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0)
            return;
        usleep(10000);
    }
    fprintf(stderr, "a reply to request %ld is lost\n", code);
}

int main(void)
{
    const int requests = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
    const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
    struct cmif_msg record;

    if (requests == -1 || replies == -1) {
        perror("msgget");
        return 1;
    }
    while (msgrcv(replies, &record, CMIF_AT_PAYLOAD, 0, IPC_NOWAIT | MSG_NOERROR) != -1) {
        /* a reply to a caller that has gone, left by an earlier daemon */
    }
    for (;;) {
        /* Type 0: the next request, whatever its code. Any program may send one, of any size. */
        const ssize_t size = msgrcv(requests, &record, CMIF_AT_PAYLOAD, 0, MSG_NOERROR);
        if (size == -1)
            return 1;
        if (size != CMIF_AT_PAYLOAD || record.mod_id == CMIF_AT_DOWNLOAD_MODE)
            continue; /* not a request, and the one that is never answered */
        reply(replies, record.mod_id,
              record.mod_id == CMIF_AT_GET_PIN_COUNTERS ? publish_counters() : NOT_SUPPORTED);
    }
}
