// Prints the counters of the SIM's PINs, which the AT daemon answers, and a value of the store.
#include <cmif.h>
#include <cstdio>
#include <tarn_nvram_config.h>

int main()
{
    int left[4] = {0, 0, 0, 0};
    if (shared_CMIF_get_mobilePINPUKC(left) != CMIF_OK)
        return 1;
    std::printf("%d %d %s\n", left[0], left[1], tarnNvramConfig_get("lte_mobile_imei"));
    return 0;
}
