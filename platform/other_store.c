/*
 * host_store.h over a platform's store, of which only the four functions of tarn_nvram_config.h are
 * known: the rest can't be found out, and the platform loads its configuration itself.
 */
#include "host_store.h"

int host_store_power_cycle(void)
{
    return 0;
}

int host_store_list(void (*each)(const char *key, const char *value, void *context), void *context)
{
    (void)each;
    (void)context;
    return -1;
}

void host_store_list_saved(void (*each)(const char *key, const char *value, void *context),
                           void *context)
{
    (void)each;
    (void)context;
}

const char *host_store_directory(void)
{
    return "";
}

double host_store_age(void)
{
    return -1;
}

void host_store_announce(void) {}

const char *host_store_announced(void)
{
    return "";
}
