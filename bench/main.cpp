// Prints each figure beside its bar; fails when one misses it.
#include "measure.h"
#include "platform/tarn_nvram_config.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <unistd.h>

namespace bench
{
namespace
{

// A store in memory with about as many keys as a router's.
std::map<std::string, std::string, std::less<>> &values()
{
    static std::map<std::string, std::string, std::less<>> all;
    return all;
}

void fill()
{
    for (int key = 0; key < 100; ++key)
        values()["lte_query_network_value_" + std::to_string(key)] = "1";
    values()["lte_mobile_imei"] = "004401018111111";
}

} // namespace
} // namespace bench

using bench::values;

extern "C" const char *tarnNvramConfig_get(const char *key)
{
    static char answer[256];
    const auto found = values().find(std::string_view(key));
    answer[found == values().end() ? 0 : found->second.copy(answer, sizeof answer - 1)] = '\0';
    return answer;
}
extern "C" int tarnNvramConfig_set(const char *key, const char *value)
{
    values()[key] = value;
    return 0;
}
extern "C" int tarnNvramConfig_match(const char *key, const char *text)
{
    return std::strcmp(tarnNvramConfig_get(key), text) == 0;
}
extern "C" int tarnNvramConfig_save(void)
{
    return 0;
}

int main()
{
    bench::figures = fdopen(dup(STDOUT_FILENO), "w");
    if (!bench::figures || !std::freopen("/dev/null", "w", stdout))
        return 1;
    bench::fill();
    bench::stay_on_one_core();
    std::fprintf(bench::figures, "%-34s %12s %12s   %5s\n", "", "by hand", "library", "ratio");
    bool good = bench::getters();
    good = bench::at_request() && good;
    good = bench::qmi_exchange() && good;
    return good ? 0 : 1;
}
