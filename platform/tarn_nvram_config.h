/*
 * What CMIF requires of a platform: four functions over a configuration store of strings.
 *
 * On a router they come with the firmware. On a development host the store in this folder provides
 * them (see docs/embedding.md); link another library with -DCMIF_STORE_LIBRARY=PATH.
 * examples/file_store has a whole one over plain files.
 *
 * A platform's store must offer:
 * - Keys of up to 47 bytes (a to z, 0 to 9 and _) and no more. cmifctl sets any key that its user
 *   names.
 * - Values of up to 2046 bytes, any but NUL: a message of 1023 characters that are all percent
 *   signs, which are stored twice. The profile's user name and password have up to 128. Cut a
 *   longer value rather than refuse it: a refused message leaves the text of an earlier one.
 * - One configuration for all processes, which see a change at once.
 * - Calls from any thread at any time, with an answer of its own for each thread. If all threads
 *   share one, only programs with a single thread are safe, such as cmifctl; cmifd is not.
 * - Use in a child after fork() without exec, where the parent has used the store: cmifctl makes
 *   each request in such a child. A store that talks to a server needs a new connection there.
 * - An answer that lives until the same thread's next call of any of the four functions, no longer.
 *   CMIF has used or copied it by then, never changes it, and passes none as an argument.
 * - Nothing on standard output, and none of the functions may end the process. CMIF passes no null
 *   pointer and no empty key.
 *
 * What this header says of "the host's store" is true of the store in this folder; CMIF does not
 * depend on it.
 *
 * The host's store: a key has 1 to 255 bytes, a value up to 8191 (host_store.h names both). A key
 * or text that is NULL, and a key or value outside these sizes, is refused: nothing is done. Every
 * failure is reported on standard error, each message once per process; nothing else is printed.
 * Reads take no lock. A set waits while another process or thread writes, for some microseconds;
 * the first call of a process opens the store, and waits while another process opens it.
 */
#ifndef TARN_NVRAM_CONFIG_H
#define TARN_NVRAM_CONFIG_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The value of `key`, NUL-terminated: never NULL, "" when the key is unset or can't be read.
 *
 * The store owns the text. It stays valid until this thread's next call of any of the four
 * functions, which may be given it as an argument. The host's store then overwrites it with '#'.
 */
const char *tarnNvramConfig_get(const char *key);

/*
 * Sets `key` to a copy of `value` in the running configuration, which all processes share; ""
 * unsets it. 0 when done. In the host's store -1 otherwise; the key then keeps its value. CMIF
 * ignores the result.
 */
int tarnNvramConfig_set(const char *key, const char *value);

/*
 * Non-zero (any such number; 1 in the host's store) when the value of `key` equals `text` byte for
 * byte, 0 otherwise. An unset key equals "".
 */
int tarnNvramConfig_match(const char *key, const char *text);

/*
 * Saves the running configuration to storage that survives a restart. 0 when done.
 *
 * The host's store replaces saved.conf atomically, and returns once the disk has it: that may take
 * tens of milliseconds, and longer while another process saves. -1 when it could not; the earlier
 * file is then still there.
 */
int tarnNvramConfig_save(void);

#ifdef __cplusplus
}
#endif

#endif
