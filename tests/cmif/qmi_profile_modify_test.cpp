// A profile modification: what travels, what is refused or corrected, and the marker around it.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_modify.h"
#include "tests/support/system_calls.h"

#include <climits>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{
// The payload by its bytes: text fields of 41, 129 and 129 bytes, three digits of 4, a last zero.
std::string wire(const std::string &apn, const std::string &user, const std::string &password,
                 const std::string &digits)
{
    std::string payload(312, '\0');
    payload.replace(0, apn.size(), apn);
    payload.replace(41, user.size(), user);
    payload.replace(170, password.size(), password);
    payload[299] = digits[0];
    payload[303] = digits[1];
    payload[307] = digits[2];
    return payload;
}

TEST_F(QmiModify, SendsTheProfile)
{
    expect_modify(0, {sending()});
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->type, 3);
    EXPECT_EQ(sent->payload, wire("internet", "me", "secret", "231"));
}

TEST_F(QmiModify, SendsAnEmptyProfile)
{
    profile = {};
    expect_modify(0, {sending()});
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->payload, wire("", "", "", "000"));
}

TEST_F(QmiModify, BytesAfterATextAreNotSent)
{
    memset(&profile, 'x', sizeof profile);
    strcpy(profile.apn, "a");
    strcpy(profile.user, "");
    strcpy(profile.password, "pp");
    profile.auth = profile.pdp = profile.curIpFamily = 1;
    expect_modify(0, {sending()});
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->payload, wire("a", "", "pp", "111"));
}

TEST_F(QmiModify, WorksWithTheTraceAndTheLogOff)
{
    store::set("debug_qmi_cmif", "0");
    expect_modify(0, {sending()});
    log_off();
    expect_modify(0, {sending()});
}

TEST_F(QmiModify, ThePasswordIsNeitherPrintedNorLogged)
{
    fill(profile.password, "Tr0ub4dor");
    const std::function<int()> call = [&] {
        return shared_CMIF_modify_profile_settings(profile, 1);
    };
    for (const FailureRow &row : failures) {
        inject(row.step);
        EXPECT_EQ(record(call).output.find("Tr0ub4dor"), std::string::npos);
    }
    queues.reply(3, "");
    EXPECT_EQ(record(call).output.find("Tr0ub4dor"), std::string::npos);
    EXPECT_EQ(DebugLogFile::text().find("Tr0ub4dor"), std::string::npos);
}

TEST_F(QmiModify, SendsTheLongestTexts)
{
    const std::string apn(40, 'a'), user(128, 'u'), password(128, 'p');
    fill(profile.apn, apn);
    fill(profile.user, user);
    fill(profile.password, password);
    expect_modify(0, {sending()});
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->payload, wire(apn, user, password, "231"));
}

TEST_F(QmiModify, TheFirstTextTooLongIsReported)
{
    profile.auth = profile.pdp = profile.curIpFamily = 9; // not looked at
    fill(profile.password, std::string(129, 'p'));
    expect_modify(5, {ready(), said(api + " password length is larger than 128")});
    fill(profile.user, std::string(129, 'u'));
    expect_modify(5, {ready(), said(api + " user length is larger than 128")});
    fill(profile.apn, std::string(41, 'a'));
    expect_modify(5, {ready(), said(api + " apn length is larger than 40")});
    EXPECT_EQ(calls::count("msgget"), 0);
}

// A record whose every byte is text: no field is ever terminated.
TEST_F(QmiModify, ARecordWithoutAnyNulIsRefused)
{
    memset(&profile, 'x', sizeof profile);
    expect_modify(5, {ready(), said(api + " apn length is larger than 40")});
}

struct NumberRow {
    int value;
    char digit;
    bool corrected;
};

TEST_F(QmiModify, AuthAndPdpTravelAsDigits)
{
    const NumberRow rows[] = {{0, '0', false}, {1, '1', false},      {2, '2', false},
                              {3, '3', false}, {4, '0', true},       {-1, '0', true},
                              {10, '0', true}, {INT_MAX, '0', true}, {INT_MIN, '0', true}};
    for (const NumberRow &row : rows) {
        SCOPED_TRACE(row.value);
        const auto lines = [&](const std::string &name) {
            return row.corrected
                       ? printed(api + " wrong " + name + " value, set default " + name + " == 0")
                       : Events{};
        };
        profile.auth = row.value;
        profile.pdp = 2;
        expect_modify(0, {ready(), lines("auth"), exchange_and_check()});
        ASSERT_TRUE(sent);
        EXPECT_EQ(sent->payload, wire("internet", "me", "secret", {row.digit, '2', '1'}));
        profile.auth = 1;
        profile.pdp = row.value;
        expect_modify(0, {ready(), lines("pdp"), exchange_and_check()});
        ASSERT_TRUE(sent);
        EXPECT_EQ(sent->payload, wire("internet", "me", "secret", {'1', row.digit, '1'}));
    }
}

TEST_F(QmiModify, TheFamilyTravelsAsADigit)
{
    const NumberRow rows[] = {{0, '0', false}, {1, '1', false},     {2, '0', true},
                              {3, '0', true},  {-1, '0', true},     {INT_MAX, '0', true},
                              {4, '0', true},  {INT_MIN, '0', true}};
    const Events line = printed(api + " wrong curIpFamily value, set default curIpFamily == 0");
    for (const NumberRow &row : rows) {
        profile.curIpFamily = row.value;
        expect_modify(0, {ready(), row.corrected ? line : Events{}, exchange_and_check()});
        ASSERT_TRUE(sent);
        EXPECT_EQ(sent->payload, wire("internet", "me", "secret", {'2', '3', row.digit}));
    }
}

TEST_F(QmiModify, AllNumbersAreCorrectedInOrder)
{
    profile.auth = profile.pdp = profile.curIpFamily = 7;
    expect_modify(0, {ready(), printed(api + " wrong auth value, set default auth == 0"),
                      printed(api + " wrong pdp value, set default pdp == 0"),
                      printed(api + " wrong curIpFamily value, set default curIpFamily == 0"),
                      exchange_and_check()});
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->payload, wire("internet", "me", "secret", "000"));
}

TEST_F(QmiModify, SendsNothingWhenTheDaemonIsNotReady)
{
    write_file(qmi_ready_path, "off");
    fill(profile.apn, std::string(41, 'a')); // not looked at
    expect_modify(1, {ready("of")});
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST_F(QmiModify, EndsAtAFailedStepOfTheExchange)
{
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_modify(row.result, {ready(), exchange_failing(row.step, 3, 312)});
    }
}

TEST_F(QmiModify, ReadinessLostDuringTheExchangeIsNotAFailure)
{
    calls::before("msgrcv", [] { write_file(qmi_ready_path, "off"); });
    expect_modify(0, {ready(), exchange(3, 312), ready("of")});
    EXPECT_TRUE(sent);
}

TEST_F(QmiModify, TheMarkerExistsWhileTheDaemonWorks)
{
    std::string marker;
    {
        const ScriptedDaemon daemon(queues, [&](const Message &request) {
            marker = read_file(profile_busy_path);
            queues.reply(request.type, "");
        });
        EXPECT_EQ(record([&] { return shared_CMIF_modify_profile_settings(profile, 0); }).result,
                  0);
    }
    EXPECT_EQ(marker, "1\n");
    EXPECT_FALSE(file_exists(profile_busy_path));
}

TEST_F(QmiModify, AnotherModificationsMarkerIsRemovedToo)
{
    write_file(profile_busy_path, "other");
    expect_modify(0, {sending()});
}

// The lines do not depend on the result of the shell.
TEST_F(QmiModify, AFailingShellChangesNothing)
{
    calls::script("system", {calls::yields(-1), calls::yields(256)});
    expect_modify(0, {sending()});
}
} // namespace
