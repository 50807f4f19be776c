/* A daemon for one request: a child process on the two queues of a channel. */
#ifndef TESTS_CMIF_EVERY_TARGET_DAEMON_H
#define TESTS_CMIF_EVERY_TARGET_DAEMON_H

#include "cmif/cmif.h"

#include <stdint.h>
#include <sys/types.h>

struct channel {
    int requests, replies; /* keys */
    size_t payload;        /* bytes of a request and of its reply */
    size_t result;         /* where in a reply the number is */
};

extern const struct channel at_channel;
extern const struct channel qmi_channel;

struct daemon {
    pid_t process;
    int seen; /* the request can be read here */
};

/* It answers the next request with that request's own bytes and `result`. */
struct daemon start_daemon(const struct channel *channel, int32_t result);

/* Waits for its end, and prints the request that it took. */
void end_daemon(const struct daemon *daemon, const struct channel *channel);

#endif
