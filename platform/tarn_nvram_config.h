/*
 * What CMIF requires of a platform: four functions over a configuration store of strings.
 *
 * On a router they come with the firmware. On a development host the store beside this header
 * answers (see docs/embedding.md); link another library with -DCMIF_STORE_LIBRARY=PATH.
 */
#ifndef TARN_NVRAM_CONFIG_H
#define TARN_NVRAM_CONFIG_H

#ifdef __cplusplus
extern "C" {
#endif

/* The value of `key`: never NULL, "" when unset. Good until this thread's next call
 * of any of the four. */
const char *tarnNvramConfig_get(const char *key);

/* Stores `value` under `key` in the running configuration; 0 when done. CMIF ignores the result. */
int tarnNvramConfig_set(const char *key, const char *value);

/* Non-zero (any such number) when the value of `key` equals `text` byte for byte. */
int tarnNvramConfig_match(const char *key, const char *text);

/* Commits the running configuration to storage that survives a restart; 0 when done. */
int tarnNvramConfig_save(void);

#ifdef __cplusplus
}
#endif

#endif
