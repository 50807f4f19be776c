/*
 * The development host's configuration store, beyond the four functions of a platform.
 *
 * One directory holds the store of all processes: the running configuration (a database that they
 * map) and saved.conf, what was saved (text, a key=value line each). The environment variable
 * CMIF_STORE names it; without, it is $XDG_RUNTIME_DIR/cmif-store or /tmp/cmif-store-UID, which the
 * host itself empties at a restart. A process settles on its directory at its first call.
 *
 * A key that is set to "" is removed: unset and empty read alike. Whatever fails says so in one
 * line on standard error, each line once per process.
 */
#ifndef PLATFORM_HOST_STORE_H
#define PLATFORM_HOST_STORE_H

#ifdef __cplusplus
extern "C" {
#endif

enum {
    host_store_key_limit = 255,    /* bytes of the longest key, its NUL not counted */
    host_store_value_limit = 8191, /* likewise of a value */
};

/* The running configuration becomes what was saved, at one stroke for all processes; 0 or -1. */
int host_store_power_cycle(void);

/* Calls `each` for every key that is set, sorted by key, as it stood at one moment; 0 or -1. */
int host_store_list(void (*each)(const char *key, const char *value, void *context), void *context);

/* Where the store lives, for messages; it need not exist. */
const char *host_store_directory(void);

#ifdef __cplusplus
}
#endif

#endif
