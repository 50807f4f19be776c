/* Stands in for a platform's store when linking: it stores nothing. */
#include "tarn_nvram_config.h"

const char *tarnNvramConfig_get(const char *key)
{
    (void)key;
    return "";
}

int tarnNvramConfig_set(const char *key, const char *value)
{
    (void)key;
    (void)value;
    return -1;
}

int tarnNvramConfig_match(const char *key, const char *text)
{
    (void)key;
    (void)text;
    return 0;
}

int tarnNvramConfig_save(void)
{
    return -1;
}
