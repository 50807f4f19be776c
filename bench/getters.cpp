#include "cmif/cmif.h"
#include "measure.h"
#include "platform/tarn_nvram_config.h"

#include <cstring>

namespace bench
{

bool getters()
{
    static char out[256];
    const Work by_hand = [] { std::strcpy(out, tarnNvramConfig_get("lte_mobile_imei")); };
    const Work by_library = [] { shared_CMIF_get_mobileIMEI(out); };
    const bool good = compare("plain getter", 50000, 1.10, by_hand, by_library);
    return expect_count("  its system calls", system_calls(by_library), 0) && good;
}

} // namespace bench
