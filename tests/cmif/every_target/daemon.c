#include "daemon.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

const struct channel at_channel = {CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY, CMIF_AT_PAYLOAD,
                                   CMIF_AT_PAYLOAD - sizeof(int32_t)};
const struct channel qmi_channel = {CMIF_QMI_REQUEST_KEY, CMIF_QMI_REPLY_KEY, CMIF_QMI_PAYLOAD, 0};

struct message {
    long type;
    char payload[CMIF_QMI_PAYLOAD];
};

/* A message of a size of its own on the QMI channel: requests there differ. */
static int serve(const struct channel *channel, int32_t result, int seen)
{
    const int requests = msgget(channel->requests, IPC_CREAT | 0666);
    const int replies = msgget(channel->replies, IPC_CREAT | 0666);
    struct message message = {0, ""};
    const ssize_t size = msgrcv(requests, &message, channel->payload, 0, 0);
    if (size < 0 || write(seen, &message, sizeof message.type + (size_t)size) < 0)
        return EXIT_FAILURE;
    memcpy(message.payload + channel->result, &result, sizeof result);
    return msgsnd(replies, &message, channel->payload, 0) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

struct daemon start_daemon(const struct channel *channel, int32_t result)
{
    struct daemon daemon;
    int ends[2];
    if (pipe(ends) != 0) {
        perror("pipe");
        exit(EXIT_FAILURE);
    }
    daemon.process = fork();
    if (daemon.process == 0)
        _exit(serve(channel, result, ends[1]));
    close(ends[1]);
    daemon.seen = ends[0];
    return daemon;
}

void end_daemon(const struct daemon *daemon, const struct channel *channel)
{
    struct message message = {0, ""};
    const ssize_t size = read(daemon->seen, &message, sizeof message);
    int status = -1;
    size_t i;
    close(daemon->seen);
    waitpid(daemon->process, &status, 0);
    printf("  the daemon ended with %d; request %ld of %d bytes, not zero:", status, message.type,
           (int)(size - (ssize_t)sizeof message.type));
    for (i = 0; i < channel->payload; ++i)
        if (message.payload[i] != '\0')
            printf(" %d=%02x", (int)i, (unsigned)(unsigned char)message.payload[i]);
    printf("\n");
}
