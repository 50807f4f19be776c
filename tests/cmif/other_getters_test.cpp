// The derived getters that are not conversions: PDP type, 4G mode, MNC format, and a placeholder.
#include "cmif/cmif.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"

#include <cstring>
#include <gtest/gtest.h>
#include <optional>

TEST(PdpType, IsReadAgainForEachComparison)
{
    store::set("debug_at_cmif", "1");
    const std::pair<const char *, std::optional<int>> types[] = {
        {"IP", 0},    {"PPP", 1}, {"IPV6", 2},     {"IPV4V6", 3}, {"ip", {}},
        {"IPv6", {}}, {"", {}},   {"IPV4V6 ", {}}, {"PPP\n", {}},
    };
    bool first = true;
    for (const auto &[stored, code] : types) {
        SCOPED_TRACE(stored);
        store::set("lte_pdp_type", stored);
        int type = -42;
        const Recorded run = record([&] { return shared_CMIF_get_mobileNetworkPDPType(&type); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(type, code.value_or(-42));
        const std::string line = "Get nvram lte_pdp_type='" + std::to_string(type) + "'";
        EXPECT_EQ(run.output, line + "\n");
        const auto reads = static_cast<size_t>(code.value_or(3) + 1);
        EXPECT_EQ(run.steps, join({Lines(reads, "get lte_pdp_type"),
                                   first ? Lines{"get debug_at_cmif"} : Lines{},
                                   {"print " + line}}));
        first = false;
    }
}

TEST(PdpType, IsSilentWhenTheSwitchIsOff)
{
    store::set("lte_pdp_type", "PPP");
    int type = 4711;
    const Recorded run = record([&] { return shared_CMIF_get_mobileNetworkPDPType(&type); });
    EXPECT_EQ(type, 1);
    EXPECT_EQ(run.steps, (Lines{"get lte_pdp_type", "get lte_pdp_type", "get debug_at_cmif"}));
}

namespace
{
const std::string technology_key = "lte_query_network_info_access_technology_select";

std::string technology_line(const std::string &value)
{
    return "Get nvram " + technology_key + "='" + value + "'";
}

std::string joined(const std::string &duplex, const std::string &technology)
{
    return duplex + " " + technology;
}

Recorded mode_4g(std::string *out)
{
    char buffer[8192] = "?";
    Recorded run = record([&] { return shared_CMIF_get_mobile4gMode(buffer); });
    *out = buffer;
    return run;
}
} // namespace

TEST(Mode4g, JoinsDuplexModeAndTechnologyOnLte)
{
    store::set("debug_at_cmif", "1");
    store::set("lte_operator_select_ats_value", "7");
    store::set("lte_query_network_duplexmode", "FDD");
    store::set(technology_key, "LTE");
    std::string out;
    const Recorded run = mode_4g(&out);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(out, "FDD LTE");
    const std::string line = technology_line("FDD LTE");
    EXPECT_EQ(run.output, line + "\n");
    EXPECT_EQ(run.steps,
              (Lines{"get lte_operator_select_ats_value", "get lte_query_network_duplexmode",
                     "get " + technology_key, "get debug_at_cmif", "print " + line}));
}

TEST(Mode4g, IsOnlyTheTechnologyOtherwise)
{
    store::set("debug_at_cmif", "1");
    store::set("lte_query_network_duplexmode", "FDD");
    store::set(technology_key, "WCDMA");
    bool first = true;
    for (const char *act : {"2", "", "77", "07", "7 ", "100"}) {
        SCOPED_TRACE(act);
        store::set("lte_operator_select_ats_value", act);
        std::string out;
        const Recorded run = mode_4g(&out);
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(out, "WCDMA");
        const std::string line = technology_line("WCDMA");
        EXPECT_EQ(run.steps, join({{"get lte_operator_select_ats_value", "get " + technology_key},
                                   first ? Lines{"get debug_at_cmif"} : Lines{},
                                   {"print " + line}}));
        first = false;
    }
}

TEST(Mode4g, PassesValuesThrough)
{
    store::set("debug_at_cmif", "1");
    store::set("lte_operator_select_ats_value", "7");
    const std::pair<std::string, std::string> values[] = {
        {"", ""},
        {"FDD", ""},
        {"", "LTE"},
        {"%s%n", "%d%%"},
        {std::string(3000, 'd'), std::string(4000, 't')},
    };
    for (const auto &[duplex, technology] : values) {
        store::set("lte_query_network_duplexmode", duplex);
        store::set(technology_key, technology);
        std::string out;
        const Recorded run = mode_4g(&out);
        EXPECT_EQ(out, joined(duplex, technology));
        EXPECT_EQ(run.output, technology_line(out) + "\n");
    }
}

TEST(Mode4g, IsSilentWhenTheSwitchIsOff)
{
    store::set("lte_operator_select_ats_value", "7");
    std::string out;
    EXPECT_EQ(mode_4g(&out).output, "");
    EXPECT_EQ(out, " ");
    EXPECT_EQ(store::reads("debug_at_cmif"), 1);
    EXPECT_EQ(mode_4g(&out).output, "");
    EXPECT_EQ(store::reads("debug_at_cmif"), 1);
}

// The number of digits goes to the caller and into the store, and is not saved.
TEST(MncFormat, CountsTheDigits)
{
    store::set("debug_at_cmif", "1");
    const std::pair<std::string, std::string> codes[] = {
        {"410", "3"},
        {"01", "2"},
        {"", "0"},
        {"1234567890", "10"},
        {std::string(4096, '1'), "4096"},
    };
    bool first = true;
    for (const auto &[mnc, digits] : codes) {
        SCOPED_TRACE(digits);
        store::set("lte_query_network_mnc", mnc);
        char out[11];
        memset(out, '?', sizeof out);
        const Recorded run = record([&] { return shared_CMIF_get_mobileNetworkMNCFormat(out); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(std::string(out), digits);
        EXPECT_EQ(store::value("lte_query_network_mnc_format"), digits);
        const std::string line = "Get nvram lte_query_network_mnc_format='" + digits + "'";
        EXPECT_EQ(run.output, line + "\n");
        EXPECT_EQ(run.steps,
                  join({{"get lte_query_network_mnc", "set lte_query_network_mnc_format=" + digits},
                        first ? Lines{"get debug_at_cmif"} : Lines{},
                        {"print " + line}}));
        first = false;
    }
}

TEST(MncFormat, IsSilentWhenTheSwitchIsOff)
{
    store::set("lte_query_network_mnc", "41");
    char out[11];
    EXPECT_EQ(record([&] { return shared_CMIF_get_mobileNetworkMNCFormat(out); }).output, "");
    EXPECT_EQ(store::value("lte_query_network_mnc_format"), "2");
}

TEST(Ipv4Address, DoesNothing)
{
    store::set("debug_at_cmif", "1");
    char out[8] = "before";
    const Recorded run = record([&] { return shared_CMIF_get_mobileIPv4Address(out); });
    EXPECT_EQ(run.result, 5);
    EXPECT_EQ(run.steps, Lines{});
    EXPECT_STREQ(out, "before");
    EXPECT_EQ(shared_CMIF_get_mobileIPv4Address(nullptr), 5);
}

TEST(OtherDerivedGetters, RefuseNullBeforeTheyTouchTheStore)
{
    store::set("debug_at_cmif", "1");
    EXPECT_EQ(shared_CMIF_get_mobileNetworkPDPType(nullptr), 5);
    EXPECT_EQ(shared_CMIF_get_mobile4gMode(nullptr), 5);
    EXPECT_EQ(shared_CMIF_get_mobileNetworkMNCFormat(nullptr), 5);
    EXPECT_EQ(store::accesses(), 0);
}
