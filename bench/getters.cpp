#include "cmif/cmif.h"
#include "measure.h"
#include "platform/tarn_nvram_config.h"

#include <cstring>

bool bench::getters()
{
    static char out[256];
    return compare(
               "plain getter", 50000, 1.10,
               [] { std::strcpy(out, tarnNvramConfig_get("lte_mobile_imei")); },
               [] { shared_CMIF_get_mobileIMEI(out); }) &&
           expect_count("  its system calls", system_calls([] { shared_CMIF_get_mobileIMEI(out); }),
                        0);
}
