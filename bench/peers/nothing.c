/* The C library alone: what the others cost is above this. */
#include "peer.h"

static int nothing(void)
{
    return 0;
}

const struct Peer peer = {.call = nothing};
