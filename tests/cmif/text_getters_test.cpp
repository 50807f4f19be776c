// The plain getters: one stored value each, and the line that each prints.
#include "cmif/cmif.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{
// The forms of the line; K is the key, V the value.
const std::string quoted = "Get nvram K='V'";
const std::string unquoted = "Get nvram K=V";
const std::string address = "ipv4 address K='V'";
const std::string value_only = "get_str='V'";

enum class Prints { switched, always, never };

struct TextGetter {
    const char *name;
    int (*get)(char *);
    std::string key;
    std::string form = quoted;
    Prints prints = Prints::switched;
};

#define GETTER(function) #function, function

const TextGetter getters[] = {
    {GETTER(shared_CMIF_get_mobileHWVersion), "lte_module_hw_ver"},
    {GETTER(shared_CMIF_get_mobileFWVersion), "lte_module_sw_ver"},
    {GETTER(shared_CMIF_get_mobileIMEI), "lte_mobile_imei"},
    {GETTER(shared_CMIF_get_mobileIMSI), "lte_mobile_imsi"},
    {GETTER(shared_CMIF_get_mobileSimICCID), "lte_mobile_iccid"},
    {GETTER(shared_CMIF_get_mobileNetworkMCC), "lte_query_network_mcc"},
    {GETTER(shared_CMIF_get_mobileLastKnownMCC), "lte_query_network_last_mcc"},
    {GETTER(shared_CMIF_get_mobileNetworkMNC), "lte_query_network_mnc"},
    {GETTER(shared_CMIF_get_mobileLastKnownMNC), "lte_query_network_last_mnc"},
    {GETTER(shared_CMIF_get_mobileNetworkCellID), "lte_query_network_cellid"},
    {GETTER(shared_CMIF_get_mobileLastKnownCellID), "lte_query_network_last_cellid"},
    {GETTER(shared_CMIF_get_mobileRSSI), "lte_query_network_rssi"},
    {GETTER(shared_CMIF_get_mobile_3G_RSSI), "lte_mobile_rssi_id_to_dbm"},
    {GETTER(shared_CMIF_get_mobileRSRP), "lte_query_network_rsrp"},
    {GETTER(shared_CMIF_get_mobileRSRQ), "lte_query_network_rsrq"},
    {GETTER(shared_CMIF_get_mobileRSSINR), "lte_query_network_sinr"},
    {GETTER(shared_CMIF_get_mobileRadioBand), "lte_query_network_info_band"},
    {GETTER(shared_CMIF_get_mobileChannelNumber), "lte_query_network_info_channel", quoted,
     Prints::always},
    {GETTER(shared_CMIF_get_mobileACtiveNetwork),
     "lte_query_network_info_access_technology_select"},
    {GETTER(shared_CMIF_get_mobileNetworkOperatorName), "lte_operator_select_operator"},
    {GETTER(shared_CMIF_get_mobileIPv4_string), "lte_ipv4_address", address},
    {GETTER(shared_CMIF_get_mobileIPv6_string), "lte_ipv6_address", quoted, Prints::never},
    {GETTER(shared_CMIF_get_mobileNetworkAPN), "lte_pdp_apn"},
    {GETTER(shared_CMIF_get_mobileLastKnownAPN), "lte_pdp_last_apn"},
    {GETTER(shared_CMIF_get_mobileNetworkLAC), "lte_network_reg_status_lac"},
    {GETTER(shared_CMIF_get_mobileLastKnownLAC), "lte_network_reg_status_last_lac"},
    {GETTER(shared_CMIF_get_mobileSimStatus), "lte_sim_status"},
    {GETTER(shared_CMIF_GetOperatorLongName), "lte_operator_select_operator_longname", value_only},
    {GETTER(shared_CMIF_GetOperatorShortName), "lte_operator_select_operator_shortname",
     value_only},
    {GETTER(shared_CMIF_GetOperatorPlmnName), "lte_operator_select_operator_plmnname", value_only},
    {GETTER(shared_CMIF_get_SubscriberNumber), "lte_subscriber_num_number", unquoted},
};

#undef GETTER

std::string line_of(const TextGetter &getter, const std::string &value)
{
    std::string line = getter.form;
    if (const size_t key = line.find('K'); key != std::string::npos)
        line.replace(key, 1, getter.key);
    return line.replace(line.find('V'), 1, value);
}

bool has_switch(const TextGetter &getter)
{
    return getter.prints == Prints::switched;
}

// A buffer that shows how far a getter wrote.
struct Buffer {
    char bytes[store::longest_value + 2];
    Buffer() { memset(bytes, '?', sizeof bytes); }
    [[nodiscard]] std::string text() const { return bytes; }
    [[nodiscard]] bool ends_with_its_nul() const { return bytes[strlen(bytes) + 1] == '?'; }
};

// One call of one getter; checks its result, its text and its steps.
void expect_call(const TextGetter &getter, const std::string &value, bool reads_switch, bool prints)
{
    SCOPED_TRACE(getter.name);
    Buffer out;
    const Recorded run = record([&] { return getter.get(out.bytes); });
    Lines steps{"get " + getter.key};
    if (reads_switch && has_switch(getter))
        steps.push_back("get debug_at_cmif");
    Lines lines;
    if (getter.prints == Prints::always || (prints && has_switch(getter)))
        lines.push_back(line_of(getter, value));
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(out.text(), value);
    EXPECT_TRUE(out.ends_with_its_nul());
    EXPECT_EQ(run.output, text(lines));
    for (const std::string &line : lines)
        steps.push_back("print " + line);
    EXPECT_EQ(run.steps, steps);
}

// Every getter once, each with a value of its own.
void expect_round(const std::string &prefix, bool reads_switch, bool prints)
{
    for (const TextGetter &getter : getters)
        store::set(getter.key, prefix + getter.name);
    for (const TextGetter &getter : getters)
        expect_call(getter, prefix + getter.name, reads_switch, prints);
}
} // namespace

TEST(TextGetters, CopyTheirValueAndPrintTheirLine)
{
    store::set("debug_at_cmif", "1");
    expect_round("first ", true, true);
    expect_round("second ", false, true);
}

TEST(TextGetters, AreSilentWhenTheSwitchIsUnset)
{
    expect_round("", true, false);
    expect_round("", false, false);
}

TEST(TextGetters, AreSilentWhenTheSwitchIsOff)
{
    store::set("debug_at_cmif", "0");
    expect_round("", true, false);
    expect_round("", false, false);
}

TEST(TextGetters, ReadASwitchOfMinusOneAgainEachTime)
{
    store::set("debug_at_cmif", "-1");
    expect_round("", true, false);
    expect_round("", true, false);
    store::set("debug_at_cmif", "1");
    expect_round("", true, true);
    expect_round("", false, true);
}

TEST(TextGetters, IgnoreALaterChangeOfTheSwitch)
{
    store::set("debug_at_cmif", "1");
    expect_round("", true, true);
    store::set("debug_at_cmif", "0");
    expect_round("", false, true);
}

// A getter called while the switch was off stays silent next to one called after it was turned on.
TEST(TextGetters, ReadTheirSwitchSeparately)
{
    for (const TextGetter &getter : getters) {
        store::set("debug_at_cmif", &getter - getters < 15 ? "0" : "1");
        expect_call(getter, "", true, &getter - getters >= 15);
    }
    store::set("debug_at_cmif", "1");
    for (const TextGetter &getter : getters)
        expect_call(getter, "", false, &getter - getters >= 15);
}

TEST(TextGetters, RefuseNullBeforeTheyTouchTheStore)
{
    store::set("debug_at_cmif", "1");
    for (const TextGetter &getter : getters) {
        SCOPED_TRACE(getter.name);
        const Recorded run = record([&] { return getter.get(nullptr); });
        EXPECT_EQ(run.result, 5);
        EXPECT_EQ(run.steps, Lines{});
        EXPECT_EQ(run.output, "");
    }
    EXPECT_EQ(store::accesses(), 0);
}

TEST(TextGetters, GiveAnEmptyTextForAnUnsetKey)
{
    for (const TextGetter &getter : getters)
        expect_call(getter, "", true, false);
}

// Nothing is converted, trimmed or cut, and stored text is never a format.
TEST(TextGetters, PassEveryByteThrough)
{
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    bytes.erase(bytes.find('\n'), 1); // it would end a recorded line
    const std::string values[] = {"-97",
                                  "  blanks  ",
                                  "%s%n%d%%",
                                  "'quoted'",
                                  "caf\xC3\xA9",
                                  bytes,
                                  std::string(4096, 'x'),
                                  std::string(store::longest_value, 'y')};
    store::set("debug_at_cmif", "1");
    bool first = true;
    for (const std::string &value : values) {
        for (const TextGetter &getter : getters) {
            store::set(getter.key, value);
            expect_call(getter, value, first, true);
        }
        first = false;
    }
}
