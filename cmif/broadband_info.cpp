// The wireless broadband summary: one record for a status page.
#include "cmif.h"
#include "store.h"
#include "trace.h"

#include <cstddef>
#include <iterator>

static_assert(sizeof(WirelessBroadbandInfo) == 184);
static_assert(offsetof(WirelessBroadbandInfo, NewNetworkMode) == 100);
static_assert(offsetof(WirelessBroadbandInfo, NewRSSI) == 120);
static_assert(offsetof(WirelessBroadbandInfo, NewModemCurrentStatus) == 124);
static_assert(offsetof(WirelessBroadbandInfo, NewPhoneNumber) == 164);

namespace cmif
{
namespace
{

// A stored code and the text that a page shows for it.
struct Label {
    char stored[4];
    char text[8];
};

struct Field {
    char name[22];
    unsigned char offset;
};

// clang-format off
#define FIELD(name) offsetof(WirelessBroadbandInfo, name)
#define TRACED(name) {#name, FIELD(name)}

constexpr Field fields[] = {
    TRACED(NewModemIdentity),
    TRACED(NewModemSWversion),
    TRACED(NewIMSI),
    TRACED(NewIMEI),
    TRACED(NewOperatorName),
    TRACED(NewNetworkMode),
    TRACED(NewRSSI),
    TRACED(NewModemCurrentStatus),
    TRACED(NewModemType),
    TRACED(NewPhoneNumber),
};
// clang-format on

// A view of the record as one run of bytes: a long value runs on into the next field, and nothing
// passes the record's end.
class Summary
{
public:
    explicit Summary(WirelessBroadbandInfo &info)
        : info_(info), bytes_(reinterpret_cast<char *>(&info))
    {
    }

    void put(std::size_t offset, const char *text) { copy_text(bytes_ + offset, end(), text); }

    template <std::size_t rows>
    void put(std::size_t offset, const char *key, const Label (&labels)[rows])
    {
        const StoredText<4> value(key);
        for (const Label &label : labels)
            if (value.is(label.stored))
                put(offset, label.text);
    }

    void trace(AtSite &site, const char *name, std::size_t offset) const
    {
        if (offset == FIELD(NewRSSI))
            site.print("List->%s=%d\n", name, info_.NewRSSI);
        else
            site.print("List->%s=%.*s\n", name, static_cast<int>(sizeof info_ - offset),
                       bytes_ + offset);
    }

private:
    const char *end() const { return bytes_ + sizeof info_; }

    WirelessBroadbandInfo &info_;
    char *bytes_;
};

} // namespace
} // namespace cmif

int shared_CMIF_GetWirelessBroadbandInfo(WirelessBroadbandInfo *info)
{
    using namespace cmif;
    static constexpr Label modes[] = {{"0", "Auto"}, {"1", "Manual"}};
    static constexpr Label types[] = {{"0", "2G"}, {"2", "3G"}, {"7", "4G"}};
    static constinit AtSite sites[std::size(fields)];
    if (!info)
        return CMIF_INVALID;

    Summary summary(*info);
    summary.put(FIELD(NewModemIdentity), tarnNvramConfig_get("lte_module_hw_ver"));
    summary.put(FIELD(NewModemSWversion), tarnNvramConfig_get("lte_module_sw_ver"));
    summary.put(FIELD(NewIMSI), tarnNvramConfig_get("lte_mobile_imsi"));
    summary.put(FIELD(NewIMEI), tarnNvramConfig_get("lte_mobile_imei"));
    summary.put(FIELD(NewOperatorName), tarnNvramConfig_get("lte_operator_select_operator"));
    summary.put(FIELD(NewNetworkMode), "lte_operator_select_network_mode", modes);
    info->NewRSSI = StoredText<8>("lte_query_network_rssi").number();
    summary.put(FIELD(NewModemCurrentStatus), "!sharedGetSIMStatus"); // a fixed marker for pages
    summary.put(FIELD(NewModemType), "lte_operator_select_ats_value", types);
    summary.put(FIELD(NewPhoneNumber), tarnNvramConfig_get("lte_subscriber_num_number"));

    for (std::size_t row = 0; row < std::size(fields); ++row)
        summary.trace(sites[row], fields[row].name, fields[row].offset);
    return CMIF_OK;
}
