/* A getter of the library. */
#include "cmif/cmif.h"
#include "peer.h"

static char imei[8192];

static int call(void)
{
    return shared_CMIF_get_mobileIMEI(imei);
}

const struct Peer peer = {.call = call};
