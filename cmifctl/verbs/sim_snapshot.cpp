#include "sim_snapshot.h"

#include "cmif/cmif.h"
#include "store.h"

#include <array>

namespace cmifctl
{
namespace
{

struct Counter {
    const char *name;
    const char *key;
};

// In the order of the library's array.
constexpr std::array<Counter, 4> counters{{{"pin1", "lte_mobile_pin1c"},
                                           {"puk1", "lte_mobile_puk1c"},
                                           {"pin2", "lte_mobile_pin2c"},
                                           {"puk2", "lte_mobile_puk2c"}}};

// A counter that the daemon has not published reads as 0, which would be a blocked SIM.
int read_counters(Json &output)
{
    std::array<int, counters.size()> left{};
    const int result = shared_CMIF_get_mobilePINPUKC(left.data());
    for (std::size_t i = 0; i < counters.size(); ++i)
        output["counters"][counters.at(i).name] =
            is_stored(counters.at(i).key) ? Json(left.at(i)) : Json();
    std::array<char, 8192> status{};
    shared_CMIF_get_mobileSimStatus(status.data());
    output["status"] = status.data();
    return result;
}

} // namespace

SimSnapshot inspect_sim(const Context &context)
{
    const Json read = at_reading(
        context, {.request = at_request("shared_CMIF_get_mobilePINPUKC", CMIF_AT_GET_PIN_COUNTERS),
                  .body = read_counters});
    return {read["counters"], read["status"]};
}

} // namespace cmifctl
