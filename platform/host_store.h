/*
 * The development host's configuration store: what it offers beyond the four functions that every
 * platform has (tarn_nvram_config.h).
 *
 * One directory holds the store of all processes: the running configuration (a database that they
 * map) and saved.conf, the saved configuration (text, one key=value line for each key). The
 * environment variable CMIF_STORE names the directory. If it is unset or empty, the directory is
 * $XDG_RUNTIME_DIR/cmif-store or /tmp/cmif-store-UID, which the host itself empties at a restart. A
 * process chooses its directory at its first call and keeps it. A symbolic link in its place is
 * refused.
 *
 * A key that is set to "" is removed: unset and empty read alike. Up to 512 threads of all
 * processes together can use the store at a time, and it holds about 16 MiB; what exceeds either is
 * refused.
 *
 * Every failure is reported on standard error: "cmif store: WHERE: WHAT; REMEDY", each message once
 * per process. All functions may be called from any thread, unless they say otherwise.
 *
 * Over a platform's store (CMIF_STORE_LIBRARY) nothing can be listed, neither directory nor age is
 * known, and a power cycle and an announcement do nothing.
 */
#ifndef PLATFORM_HOST_STORE_H
#define PLATFORM_HOST_STORE_H

#ifdef __cplusplus
extern "C" {
#endif

enum {
    host_store_key_limit = 255,    /* bytes of the longest key, without its NUL */
    host_store_value_limit = 8191, /* bytes of the longest value, without its NUL */
};

/*
 * Replaces the running configuration by the saved one, as a restart of a router does. Atomic: other
 * processes see the old configuration or the new one, never a mixture. Waits while another process
 * writes. 0, or -1 with everything as it was. Lines of saved.conf that can't be read are reported
 * and skipped; the result is still 0.
 */
int host_store_power_cycle(void);

/*
 * Calls `each` for every key that is set, in the order of their bytes, with its value and
 * `context`. All values are those of one moment. The texts belong to the store and are valid during
 * that call, in which `each` may use the store. Never blocks on writers. 0, or -1 without any call.
 */
int host_store_list(void (*each)(const char *key, const char *value, void *context), void *context);

/*
 * The same for the saved configuration, which a restart loads. Lines that can't be read are
 * reported and skipped.
 */
void host_store_list_saved(void (*each)(const char *key, const char *value, void *context),
                           void *context);

/*
 * The absolute path of the store's directory, for messages; "" over a platform's store. It need not
 * exist: this function neither creates nor opens anything, and prints nothing. The text is valid
 * until the process ends.
 */
const char *host_store_directory(void);

/*
 * Seconds since a process last changed a value of the running configuration; negative when that is
 * not known. Neither creates nor opens anything, and prints nothing.
 */
double host_store_age(void);

/*
 * For a daemon that publishes into this process's store: lets every user find out which store that
 * is, until the process ends. Best effort: nothing is reported.
 */
void host_store_announce(void);

/*
 * The directory of the store that a running daemon has announced, "" without one. The text is valid
 * until the next call; one thread at a time.
 */
const char *host_store_announced(void);

#ifdef __cplusplus
}
#endif

#endif
