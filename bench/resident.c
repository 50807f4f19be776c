/* Prints the private (dirty) memory of this process in KiB, with the library or without it. */
#include "cmif/cmif.h"
#include "platform/tarn_nvram_config.h"

#include <stdio.h>
#include <string.h>

int main(void)
{
    char line[256];
    long kilobytes, sum = 0;
    FILE *map;
#ifdef WITH_CMIF
    shared_CMIF_get_mobileIMEI(line);
#else
    strcpy(line, tarnNvramConfig_get("lte_mobile_imei"));
#endif
    map = fopen("/proc/self/smaps_rollup", "r");
    while (map && fgets(line, sizeof line, map))
        if (sscanf(line, "Private_Dirty: %ld", &kilobytes) == 1)
            sum += kilobytes;
    printf("%ld\n", sum);
    return 0;
}
