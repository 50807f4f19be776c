/* A request with a time limit, for programs that must not hang; callers of one request take turns.
 * All of them must run as the same user, to whom the lock files in /tmp belong. Plain C, over
 * cmif.h.
 *
 * PENDING means that the request is not in the queue: the daemon took it and has not answered, or
 * could not be given it yet, because the queue is full or a profile is being changed. It leaves a
 * child that goes on and takes the late reply away, so that no other request gets it. A program
 * that goes on for long collects the child's end, or ignores SIGCHLD. */
#ifndef EXAMPLES_BOUNDED_CALL_H
#define EXAMPLES_BOUNDED_CALL_H

#include <stddef.h>

struct request {
    int queue;                 /* CMIF_AT_REQUEST_KEY or CMIF_QMI_REQUEST_KEY */
    int code;                  /* of enum cmif_at_code or cmif_qmi_code */
    int (*call)(void *values); /* calls the library, in a child process */
    void *values;              /* what goes in and comes out: `size` bytes, at most 4000 */
    size_t size;
    int result; /* of the call, when it was answered */
};

enum outcome {
    ANSWERED,   /* `result` and `values` are set */
    WITHDRAWN,  /* the daemon took no request in time; it will not carry this one out */
    PENDING,    /* there was no answer in time; the daemon may still carry it out */
    BUSY,       /* another caller waits for a reply to this code; nothing was sent */
    OTHER_USER, /* the lock file belongs to another user; nothing was sent */
    FAILED      /* no process or file could be had, and nothing was sent; or the call crashed */
};

/* `seconds` are for both: waiting for other callers, and the request. */
enum outcome request_within(int seconds, struct request *request);

#endif
