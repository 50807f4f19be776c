// The wireless broadband summary: one record for a status page.
#include "array_size.h"
#include "cmif.h"
#include "store.h"
#include "trace.h"

static_assert(sizeof(WirelessBroadbandInfo) == 184);
static_assert(offsetof(WirelessBroadbandInfo, NewNetworkMode) == 100);
static_assert(offsetof(WirelessBroadbandInfo, NewRSSI) == 120);
static_assert(offsetof(WirelessBroadbandInfo, NewModemCurrentStatus) == 124);
static_assert(offsetof(WirelessBroadbandInfo, NewPhoneNumber) == 164);

namespace cmif
{
namespace
{

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

// A stored code and the text that a page shows for it.
struct Label {
    char stored[4];
    char text[8];
};

// The record as one run of bytes: a long value overflows into the next field.
class Summary
{
public:
    explicit Summary(WirelessBroadbandInfo &info) : bytes_(reinterpret_cast<char *>(&info)) {}

    void set_text(std::size_t offset, const char *text)
    {
        copy_text(bytes_ + offset, bytes_ + sizeof(WirelessBroadbandInfo), text);
    }

    // A code that isn't listed leaves the field as it was.
    template <std::size_t rows>
    void set_label(std::size_t offset, const char *key, const Label (&labels)[rows])
    {
        const StoredText<4> value(key);
        for (const Label &label : labels)
            if (value.is(label.stored))
                set_text(offset, label.text);
    }

    // No bound: the last field is as long as the caller's own record type makes it.
    void set_phone_number(const char *text) { std::strcpy(bytes_ + FIELD(NewPhoneNumber), text); }

    // A field that was left without a NUL is printed up to the phone number's at the latest.
    void trace(AtSite &site, const Field &field) const
    {
        const char *value = bytes_ + field.offset;
        if (field.offset == FIELD(NewRSSI))
            site.print("List->%s=%d\n", field.name, *reinterpret_cast<const int *>(value));
        else
            site.print("List->%s=%s\n", field.name, value);
    }

private:
    char *bytes_;
};

} // namespace
} // namespace cmif

int shared_CMIF_GetWirelessBroadbandInfo(WirelessBroadbandInfo *info)
{
    using namespace cmif;
    static constexpr Label modes[] = {{"0", "Auto"}, {"1", "Manual"}};
    static constexpr Label types[] = {{"0", "2G"}, {"2", "3G"}, {"7", "4G"}};
    static constinit AtSite sites[array_size(fields)];
    if (!info)
        return CMIF_INVALID;

    Summary summary(*info);
    summary.set_text(FIELD(NewModemIdentity), tarnNvramConfig_get("lte_module_hw_ver"));
    summary.set_text(FIELD(NewModemSWversion), tarnNvramConfig_get("lte_module_sw_ver"));
    summary.set_text(FIELD(NewIMSI), tarnNvramConfig_get("lte_mobile_imsi"));
    summary.set_text(FIELD(NewIMEI), tarnNvramConfig_get("lte_mobile_imei"));
    summary.set_text(FIELD(NewOperatorName), tarnNvramConfig_get("lte_operator_select_operator"));
    summary.set_label(FIELD(NewNetworkMode), "lte_operator_select_network_mode", modes);
    info->NewRSSI = StoredText<8>("lte_query_network_rssi").number();
    // A fixed text that status pages recognise: the SIM status is not looked up.
    summary.set_text(FIELD(NewModemCurrentStatus), "!sharedGetSIMStatus");
    summary.set_label(FIELD(NewModemType), "lte_operator_select_ats_value", types);
    summary.set_phone_number(tarnNvramConfig_get("lte_subscriber_num_number"));

    for (std::size_t row = 0; row < array_size(fields); ++row)
        summary.trace(sites[row], fields[row]);
    return CMIF_OK;
}
