#include "cmif/cmif.h"
#include "readings.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace cmifctl
{
namespace
{

// A field of the record, which a long value fills without a NUL.
template <std::size_t N>
Json text_of(const char (&text)[N])
{
    const std::size_t length = strnlen(text, N);
    return length == 0 ? Json() : Json(std::string(text, length));
}

// The library copies the phone number, the last field, without a bound.
struct SummaryRecord {
    WirelessBroadbandInfo info;
    char more_of_the_number[64 * 1024]; // more than any value of a store

    Json number() const
    {
        const char *text =
            reinterpret_cast<const char *>(this) + offsetof(WirelessBroadbandInfo, NewPhoneNumber);
        return *text == '\0' ? Json() : Json(text);
    }
};

int read_summary(Json &output)
{
    static SummaryRecord record;
    const WirelessBroadbandInfo &info = record.info;
    const int result = shared_CMIF_GetWirelessBroadbandInfo(&record.info);
    output = {{"identity", text_of(info.NewModemIdentity)},
              {"software", text_of(info.NewModemSWversion)},
              {"imsi", text_of(info.NewIMSI)},
              {"imei", text_of(info.NewIMEI)},
              {"operator", text_of(info.NewOperatorName)},
              {"selection", text_of(info.NewNetworkMode)},
              {"rssi", info.NewRSSI},
              {"modem_status", text_of(info.NewModemCurrentStatus)},
              {"generation", text_of(info.NewModemType)},
              {"number", record.number()}};
    if (info.NewRSSI == 0)
        output["rssi"] = nullptr; // nothing published; no receiver measures 0 dBm
    return result;
}

} // namespace

void report_summary(Context &context)
{
    const Json summary = read(context, "shared_CMIF_GetWirelessBroadbandInfo", read_summary);
    constexpr std::string_view shown[]{"operator", "selection", "rssi", "generation", "number"};
    for (const auto &[key, value] : summary.items()) {
        const bool hidden = std::find(std::begin(shown), std::end(shown), key) == std::end(shown);
        context.report.field(
            "summary",
            {.key = key, .value = value, .unit = key == "rssi" ? "dBm" : "", .hidden = hidden});
    }
}

} // namespace cmifctl
