// The wireless broadband summary: its layout, where each field comes from, and its ten lines.
#include "cmif/cmif.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"

#include <cstddef>
#include <cstring>
#include <gtest/gtest.h>

// The layout crosses the library's boundary.
static_assert(offsetof(WirelessBroadbandInfo, NewModemIdentity) == 0);
static_assert(offsetof(WirelessBroadbandInfo, NewModemSWversion) == 20);
static_assert(offsetof(WirelessBroadbandInfo, NewIMSI) == 40);
static_assert(offsetof(WirelessBroadbandInfo, NewIMEI) == 60);
static_assert(offsetof(WirelessBroadbandInfo, NewOperatorName) == 80);
static_assert(offsetof(WirelessBroadbandInfo, NewNetworkMode) == 100);
static_assert(offsetof(WirelessBroadbandInfo, NewRSSI) == 120);
static_assert(offsetof(WirelessBroadbandInfo, NewModemCurrentStatus) == 124);
static_assert(offsetof(WirelessBroadbandInfo, NewModemType) == 144);
static_assert(offsetof(WirelessBroadbandInfo, NewPhoneNumber) == 164);
static_assert(sizeof(WirelessBroadbandInfo) == 184);

namespace
{
// A record that shows what was written, and the bytes after it.
struct Caller {
    WirelessBroadbandInfo info;
    char after[64];

    Caller() { memset(static_cast<void *>(this), '?', sizeof *this); }
    Recorded call()
    {
        return record([this] { return shared_CMIF_GetWirelessBroadbandInfo(&info); });
    }
    [[nodiscard]] std::string bytes(size_t offset, size_t size) const
    {
        return {reinterpret_cast<const char *>(this) + offset, size};
    }
    [[nodiscard]] bool is_whole() const { return std::string(after, 64) == std::string(64, '?'); }
};

// A text field filled with `text`: the bytes after its NUL stay.
std::string field(const std::string &text)
{
    std::string bytes = text + '\0';
    bytes.resize(20, '?');
    return bytes;
}

void store_link()
{
    store::set("lte_module_hw_ver", "HW-1.0");
    store::set("lte_module_sw_ver", "SW-2.3.4");
    store::set("lte_mobile_imsi", "001010123456789");
    store::set("lte_mobile_imei", "490154203237518");
    store::set("lte_operator_select_operator", "Test Network");
    store::set("lte_operator_select_network_mode", "0");
    store::set("lte_query_network_rssi", "-75");
    store::set("lte_operator_select_ats_value", "7");
    store::set("lte_subscriber_num_number", "+15550100");
}

const Lines reads{
    "get lte_module_hw_ver",
    "get lte_module_sw_ver",
    "get lte_mobile_imsi",
    "get lte_mobile_imei",
    "get lte_operator_select_operator",
    "get lte_operator_select_network_mode",
    "get lte_query_network_rssi",
    "get lte_operator_select_ats_value",
    "get lte_subscriber_num_number",
};

const Lines lines{
    "List->NewModemIdentity=HW-1.0",
    "List->NewModemSWversion=SW-2.3.4",
    "List->NewIMSI=001010123456789",
    "List->NewIMEI=490154203237518",
    "List->NewOperatorName=Test Network",
    "List->NewNetworkMode=Auto",
    "List->NewRSSI=-75",
    "List->NewModemCurrentStatus=!sharedGetSIMStatus",
    "List->NewModemType=4G",
    "List->NewPhoneNumber=+15550100",
};
} // namespace

TEST(BroadbandInfo, FillsEveryFieldAndPrintsEachOnce)
{
    store::set("debug_at_cmif", "1");
    store_link();
    Caller caller;
    const Recorded run = caller.call();
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(caller.bytes(0, 20), field("HW-1.0"));
    EXPECT_EQ(caller.bytes(20, 20), field("SW-2.3.4"));
    EXPECT_EQ(caller.bytes(40, 20), field("001010123456789"));
    EXPECT_EQ(caller.bytes(60, 20), field("490154203237518"));
    EXPECT_EQ(caller.bytes(80, 20), field("Test Network"));
    EXPECT_EQ(caller.bytes(100, 20), field("Auto"));
    EXPECT_EQ(caller.bytes(120, 4), bytes_of(-75));
    EXPECT_EQ(caller.bytes(124, 20), field("!sharedGetSIMStatus"));
    EXPECT_EQ(caller.bytes(144, 20), field("4G"));
    EXPECT_EQ(caller.bytes(164, 20), field("+15550100"));
    EXPECT_TRUE(caller.is_whole());
    EXPECT_EQ(run.output, text(lines));

    Lines steps = reads;
    for (const std::string &line : lines)
        steps = join({steps, {"get debug_at_cmif", "print " + line}});
    EXPECT_EQ(run.steps, steps);

    steps = reads;
    for (const std::string &line : lines)
        steps.push_back("print " + line);
    EXPECT_EQ(caller.call().steps, steps);
}

TEST(BroadbandInfo, HasTenSwitches)
{
    store_link();
    Caller caller;
    EXPECT_EQ(caller.call().steps, join({reads, Lines(10, "get debug_at_cmif")}));
    store::set("debug_at_cmif", "1");
    EXPECT_EQ(caller.call().steps, reads);
    EXPECT_STREQ(caller.info.NewOperatorName, "Test Network");
}

TEST(BroadbandInfo, ReadsASwitchOfMinusOneAgainAtEachPlace)
{
    store_link();
    store::set("debug_at_cmif", "-1");
    Caller caller;
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(caller.call().steps, join({reads, Lines(10, "get debug_at_cmif")}));
}

TEST(BroadbandInfo, RefusesNullBeforeItTouchesTheStore)
{
    store::set("debug_at_cmif", "1");
    const Recorded run = record([] { return shared_CMIF_GetWirelessBroadbandInfo(nullptr); });
    EXPECT_EQ(run.result, 5);
    EXPECT_EQ(run.steps, Lines{});
    EXPECT_EQ(store::accesses(), 0);
}

TEST(BroadbandInfo, NamesTheSelectionMode)
{
    store::set("debug_at_cmif", "1");
    const std::pair<std::string, std::string> modes[] = {
        {"0", "Auto"},    {"1", "Manual"},       {"2", "before"},  {"", "before"},
        {"00", "before"}, {"0123456", "before"}, {" 0", "before"},
    };
    for (const auto &[stored, name] : modes) {
        SCOPED_TRACE(stored);
        store::set("lte_operator_select_network_mode", stored);
        Caller caller;
        strcpy(caller.info.NewNetworkMode, "before");
        const Recorded run = caller.call();
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(std::string(caller.info.NewNetworkMode), name);
        EXPECT_NE(run.output.find("List->NewNetworkMode=" + name + "\n"), std::string::npos);
    }
}

TEST(BroadbandInfo, NamesTheModemType)
{
    store::set("debug_at_cmif", "1");
    const std::pair<std::string, std::string> types[] = {
        {"0", "2G"},       {"2", "3G"},      {"7", "4G"},        {"1", "before"}, {"3", "before"},
        {"4", "before"},   {"5", "before"},  {"6", "before"},    {"8", "before"}, {"", "before"},
        {"100", "before"}, {"77", "before"}, {"7000", "before"},
    };
    for (const auto &[stored, name] : types) {
        SCOPED_TRACE(stored);
        store::set("lte_operator_select_ats_value", stored);
        Caller caller;
        strcpy(caller.info.NewModemType, "before");
        const Recorded run = caller.call();
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(std::string(caller.info.NewModemType), name);
        EXPECT_NE(run.output.find("List->NewModemType=" + name + "\n"), std::string::npos);
    }
}

// Seven characters of the stored signal count.
TEST(BroadbandInfo, ConvertsTheSignal)
{
    store::set("debug_at_cmif", "1");
    const std::pair<std::string, int> signals[] = {
        {"", 0},
        {"-101", -101},
        {"-75", -75},
        {"0", 0},
        {"31", 31},
        {" -7dBm", -7},
        {"unknown", 0},
        {"1234567", 1234567},
        {"123456789", 1234567},
        {std::string(4096, '1'), 1111111},
    };
    for (const auto &[stored, signal] : signals) {
        SCOPED_TRACE(stored.substr(0, 20));
        store::set("lte_query_network_rssi", stored);
        Caller caller;
        const Recorded run = caller.call();
        EXPECT_EQ(caller.info.NewRSSI, signal);
        EXPECT_NE(run.output.find("List->NewRSSI=" + std::to_string(signal) + "\n"),
                  std::string::npos);
    }
}

TEST(BroadbandInfo, GivesEmptyTextsForUnsetKeys)
{
    Caller caller;
    EXPECT_EQ(caller.call().result, 0);
    for (const unsigned offset : {0U, 20U, 40U, 60U, 80U, 164U})
        EXPECT_EQ(caller.bytes(offset, 20), field("")) << offset;
    EXPECT_EQ(caller.bytes(100, 20), std::string(20, '?')); // neither mode nor type is known
    EXPECT_EQ(caller.bytes(144, 20), std::string(20, '?'));
    EXPECT_EQ(caller.info.NewRSSI, 0);
    EXPECT_STREQ(caller.info.NewModemCurrentStatus, "!sharedGetSIMStatus");
}

// 20 characters and more run on into the next field, which then overwrites its part.
TEST(BroadbandInfo, OverflowsIntoTheNextField)
{
    store_link();
    store::set("lte_module_hw_ver", std::string(25, 'h'));
    store::set("lte_operator_select_operator", std::string(30, 'o'));
    store::set("lte_operator_select_network_mode", "9");
    Caller caller;
    EXPECT_EQ(caller.call().result, 0);
    EXPECT_EQ(caller.bytes(0, 29), std::string(20, 'h') + "SW-2.3.4" + '\0');
    EXPECT_EQ(caller.bytes(80, 31), std::string(30, 'o') + '\0');
    EXPECT_TRUE(caller.is_whole());
}

// Values other than the phone number stop at the end of the record as it is declared, and each text
// ends within it.
TEST(BroadbandInfo, StopsAtTheEndOfTheRecord)
{
    const std::string keys[] = {"lte_module_hw_ver", "lte_module_sw_ver", "lte_mobile_imsi",
                                "lte_mobile_imei", "lte_operator_select_operator"};
    const size_t offsets[] = {0, 20, 40, 60, 80};
    store::set("debug_at_cmif", "1");
    for (size_t i = 0; i < 5; ++i) {
        for (const size_t size : {size_t{19}, size_t{20}, size_t{183 - offsets[i]},
                                  size_t{184 - offsets[i]}, size_t{4096}}) {
            SCOPED_TRACE(keys[i] + " of " + std::to_string(size));
            store_link();
            store::set(keys[i], std::string(size, 'x'));
            Caller caller;
            EXPECT_EQ(caller.call().result, 0);
            EXPECT_TRUE(caller.is_whole());
            EXPECT_EQ(caller.bytes(offsets[i], 19), std::string(19, 'x'));
            EXPECT_NE(memchr(caller.info.NewPhoneNumber, 0, 20), nullptr);
        }
    }
}

// The phone number is as long as it is: a caller's own record type may give it more room.
TEST(BroadbandInfo, CopiesAndPrintsThePhoneNumberWhole)
{
    store::set("debug_at_cmif", "1");
    for (const size_t size : {size_t{0}, size_t{19}, size_t{20}, size_t{63}, size_t{83}}) {
        SCOPED_TRACE(size);
        const std::string number(size, '5');
        store_link();
        store::set("lte_subscriber_num_number", number);
        Caller caller;
        const Recorded run = caller.call();
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(caller.bytes(164, size + 1), number + '\0');
        EXPECT_EQ(caller.bytes(165 + size, 83 - size), std::string(83 - size, '?'));
        Lines expected = lines;
        expected.back() = "List->NewPhoneNumber=" + number;
        EXPECT_EQ(run.output, text(expected));
    }
}

// A field without a NUL is printed up to the next one, which may be the phone number's.
TEST(BroadbandInfo, PrintsAnOpenFieldUpToTheEndOfThePhoneNumber)
{
    store::set("debug_at_cmif", "1");
    store::set("lte_subscriber_num_number", std::string(40, '5'));
    Caller caller;
    const Recorded run = caller.call();
    EXPECT_NE(run.output.find("\nList->NewModemType=" + std::string(20, '?') +
                              std::string(40, '5') + "\nList->NewPhoneNumber="),
              std::string::npos);
}
