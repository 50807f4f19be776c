#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "store.h"
#include "verbs.h"

#include <cstddef>
#include <cstring>

namespace cmifctl
{
namespace
{

// A field of the record, which a long value fills without a NUL.
template <std::size_t N>
Json text_of(const char (&text)[N])
{
    return text_or_null({text, strnlen(text, N)});
}

// The library copies the phone number, the last field, without a bound.
struct SummaryRecord {
    WirelessBroadbandInfo info;
    char more_of_the_number[64 * 1024]; // more than any value of a store

    Json number() const
    {
        return text_or_null(reinterpret_cast<const char *>(this) +
                            offsetof(WirelessBroadbandInfo, NewPhoneNumber));
    }
};

int read_summary(Json &output)
{
    static SummaryRecord record;
    const WirelessBroadbandInfo &info = record.info;
    const int result = shared_CMIF_GetWirelessBroadbandInfo(&record.info);
    output = {{"modem_identity", text_of(info.NewModemIdentity)},
              {"modem_sw_version", text_of(info.NewModemSWversion)},
              {"imsi", text_of(info.NewIMSI)},
              {"imei", text_of(info.NewIMEI)},
              {"operator_name", text_of(info.NewOperatorName)},
              {"network_mode", text_of(info.NewNetworkMode)},
              {"rssi", info.NewRSSI},
              {"modem_current_status", text_of(info.NewModemCurrentStatus)},
              {"modem_type", text_of(info.NewModemType)},
              {"phone_number", record.number()}};
    if (info.NewRSSI == 0)
        output["rssi"] = nullptr; // nothing published; no receiver measures 0 dBm
    return result;
}

} // namespace

// The record as the library fills it: its own words for what other commands show as codes.
void summary(Context &context)
{
    const Json values =
        read_published(context, {.request = no_request("shared_CMIF_GetWirelessBroadbandInfo"),
                                 .body = read_summary});
    for (const auto &[key, value] : values.items())
        context.report.field("summary", {key, value, key == "rssi" ? "dBm" : ""});
}

} // namespace cmifctl
