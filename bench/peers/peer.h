/*
 * One way to ask another process for something, as a program of its own: a server that answers each
 * record by the same record, and a client. main.c runs them.
 */
#ifndef BENCH_PEERS_PEER_H
#define BENCH_PEERS_PEER_H

enum { record_size = 116 }; /* bytes of a request and of its answer, as on the AT channel */

struct Peer {            /* all but `call` may be null */
    void (*serve)(void); /* calls ready() when it can answer; returns only on an error */
    int (*start)(void);  /* 0 when the client is connected */
    int (*call)(void);   /* 0 when a request was sent and its whole answer has arrived */
    void (*stop)(void);
};

extern const struct Peer peer; /* defined by each program */

void ready(void);

#endif
