// Reading the connection profile: the stored texts, their bounds, and the six lines of the trace.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{
const std::string api = "shared_CMIF_get_profile_settings";

class QmiProfile : public QmiTest
{
protected:
    QmiProfile() { memset(&profile, '~', sizeof profile); }

    [[nodiscard]] std::function<int()> get()
    {
        return [this] { return shared_CMIF_get_profile_settings(&profile); };
    }

    static void store_profile()
    {
        store::set("lte_qmi_apn", "internet");
        store::set("lte_qmi_user", "me");
        store::set("lte_qmi_password", "secret");
        store::set("lte_qmi_auth", "2");
        store::set("lte_qmi_pdp", "3");
        store::set("lte_qmi_cur_ip_family", "1");
    }

    // A line of the trace; none of them is logged.
    static Events field(const std::string &name, const std::string &value)
    {
        return {{"print [CMIF-QMI] - " + api + " " + name + " = " + value, "", true},
                {"print ", "", true}};
    }

    static Events fields(const std::vector<std::string> &values)
    {
        return sequence({field("apn", values[0]), field("user", values[1]),
                         field("password", values[2]), field("auth", values[3]),
                         field("pdp", values[4]), field("curIpFamily", values[5])});
    }

    qmi_profile profile{};
};

TEST_F(QmiProfile, FillsAllFields)
{
    store_profile();
    expect_call(get(), 0, {caller(api), fields({"internet", "me", "secret", "2", "3", "1"})});
    EXPECT_STREQ(profile.apn, "internet");
    EXPECT_STREQ(profile.user, "me");
    EXPECT_STREQ(profile.password, "secret");
    EXPECT_EQ(profile.auth, 2);
    EXPECT_EQ(profile.pdp, 3);
    EXPECT_EQ(profile.curIpFamily, 1);
}

TEST_F(QmiProfile, IsEmptyWhenNothingIsStored)
{
    expect_call(get(), 0, {caller(api), fields({"", "", "", "", "", ""})});
    EXPECT_STREQ(profile.apn, "");
    EXPECT_STREQ(profile.user, "");
    EXPECT_STREQ(profile.password, "");
    EXPECT_EQ(profile.auth, 0);
    EXPECT_EQ(profile.pdp, 0);
    EXPECT_EQ(profile.curIpFamily, 0);
}

TEST_F(QmiProfile, WorksWithTheTraceOff)
{
    store::set("debug_qmi_cmif", "0");
    store_profile();
    expect_call(get(), 0, {caller(api)});
    EXPECT_STREQ(profile.password, "secret");
}

TEST_F(QmiProfile, TheDaemonIsNotAsked)
{
    std::filesystem::remove(qmi_ready_path);
    store_profile();
    EXPECT_EQ(record(get()).result, 0);
    EXPECT_STREQ(profile.apn, "internet");
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST_F(QmiProfile, RefusesNull)
{
    const int reads = store::reads("lte_qmi_apn");
    expect_call([] { return shared_CMIF_get_profile_settings(nullptr); }, 5, {caller(api)});
    EXPECT_EQ(store::reads("lte_qmi_apn"), reads);
}

// All values are copied before the first switch is read, and each line reads its own.
TEST_F(QmiProfile, ReadsAllValuesBeforeTheFirstSwitch)
{
    log_off();
    store_profile();
    Lines all{"get debug_qmi_cmif", caller(api)[0].step, "print ",
              "get lte_qmi_apn",    "get lte_qmi_user",  "get lte_qmi_password",
              "get lte_qmi_auth",   "get lte_qmi_pdp",   "get lte_qmi_cur_ip_family"};
    const std::vector<std::string> values{"internet", "me", "secret", "2", "3", "1"};
    for (const Event &event : fields(values)) {
        if (event.step != "print ")
            all.emplace_back("get debug_qmi_cmif");
        all.push_back(event.step);
    }
    EXPECT_EQ(record(get()).steps, all);
    EXPECT_EQ(switch_reads(record(get())), 0);
}

TEST_F(QmiProfile, CopiesTheLongestTexts)
{
    store::set("lte_qmi_apn", std::string(40, 'a'));
    store::set("lte_qmi_user", std::string(128, 'u'));
    store::set("lte_qmi_password", std::string(128, 'p'));
    EXPECT_EQ(record(get()).result, 0);
    EXPECT_EQ(profile.apn, std::string(40, 'a'));
    EXPECT_EQ(profile.user, std::string(128, 'u'));
    EXPECT_EQ(profile.password, std::string(128, 'p'));
}

TEST_F(QmiProfile, LongerTextsAreCutAndTerminated)
{
    for (const size_t more : {1U, 2U, 50U, 5000U}) {
        store::set("lte_qmi_apn", std::string(40 + more, 'a'));
        store::set("lte_qmi_user", std::string(128 + more, 'u'));
        store::set("lte_qmi_password", std::string(128 + more, 'p'));
        memset(&profile, '~', sizeof profile);
        expect_call(get(), 0,
                    {caller(api), fields({std::string(40, 'a'), std::string(128, 'u'),
                                          std::string(128, 'p'), "", "", ""})});
        ASSERT_EQ(strnlen(profile.apn, sizeof profile.apn), 40U);
        ASSERT_EQ(strnlen(profile.user, sizeof profile.user), 128U);
        ASSERT_EQ(strnlen(profile.password, sizeof profile.password), 128U);
        EXPECT_EQ(profile.apn, std::string(40, 'a'));
        EXPECT_EQ(profile.user, std::string(128, 'u'));
        EXPECT_EQ(profile.password, std::string(128, 'p'));
    }
}

TEST_F(QmiProfile, NumbersAreNotChecked)
{
    const std::pair<std::string, int> rows[] = {
        {"7", 7},
        {"-5", -5},
        {" +3", 3},
        {"2x", 2},
        {"x", 0},
        {"2147483647", 2147483647},
        {"00012", 12},
        {"1 2", 1},
        {std::string(48, ' ') + "7", 7},
        {std::string(5000, ' ') + "7", 0}, // cut before its digit
    };
    for (const auto &[stored, number] : rows) {
        for (const char *key : {"lte_qmi_auth", "lte_qmi_pdp", "lte_qmi_cur_ip_family"})
            store::set(key, stored);
        EXPECT_EQ(record(get()).result, 0);
        EXPECT_EQ(profile.auth, number) << stored;
        EXPECT_EQ(profile.pdp, number) << stored;
        EXPECT_EQ(profile.curIpFamily, number) << stored;
    }
}

TEST_F(QmiProfile, LongNumbersArePrintedUpTo49Characters)
{
    const auto stored = [](char digit) { return std::string(60, digit); };
    const auto shown = [](char digit) { return std::string(49, digit); };
    store_profile();
    store::set("lte_qmi_auth", stored('1'));
    store::set("lte_qmi_pdp", stored('2'));
    store::set("lte_qmi_cur_ip_family", stored('3'));
    expect_call(
        get(), 0,
        {caller(api), fields({"internet", "me", "secret", shown('1'), shown('2'), shown('3')})});
}

TEST_F(QmiProfile, StoredTextIsNotAFormat)
{
    store_profile();
    store::set("lte_qmi_user", "%s%n%d");
    store::set("lte_qmi_password", "100%");
    expect_call(get(), 0, {caller(api), fields({"internet", "%s%n%d", "100%", "2", "3", "1"})});
}
} // namespace
