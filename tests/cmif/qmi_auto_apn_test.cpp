// The rule of automatic APN selection, and what it records.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_modify.h"
#include "tests/support/system_calls.h"

#include <gtest/gtest.h>

namespace
{
constexpr char state_key[] = "lte_qmi_connection_status";
constexpr char record_key[] = "lte_set_auto_apn";

using QmiAutoApn = QmiModify;

// What the rule does: goes on with a line, ignores the change with a line, or goes on silently.
enum class Branch { same, ignored, none };

struct Row {
    std::string state, recorded, requested;
    Branch branch;
};

const Row rows[] = {
    // Not connected, the same APN
    {"1", "internet", "internet", Branch::same},
    {"2", "internet", "internet", Branch::same},
    {"0", "internet", "internet", Branch::same},
    {"", "internet", "internet", Branch::same},
    {"33", "internet", "internet", Branch::same},
    {"connecting", "internet", "internet", Branch::same},
    {"1", "", "", Branch::same}, // though nothing is recorded
    {"", "", "", Branch::same},
    // Connected, or another APN on record
    {"3", "internet", "internet", Branch::ignored},
    {"3", "internet", "ims", Branch::ignored},
    {"1", "internet", "ims", Branch::ignored},
    {"1", "internet", "Internet", Branch::ignored},
    {"1", "internet", "inter", Branch::ignored},
    {"1", "internet", "", Branch::ignored},
    {"3", "internet", "", Branch::ignored},
    {"", "internet", "ims", Branch::ignored},
    // Nothing on record
    {"1", "", "internet", Branch::none},
    {"", "", "internet", Branch::none},
    {"3", "", "internet", Branch::none},
    {"3", "", "", Branch::none},
};

Events same_line(const std::string &state, const std::string &requested)
{
    return said("shared_CMIF_modify_profile_settings action: lte_set_auto_apn is not empty. "
                "Connection status is " +
                state + " and apn is " + requested);
}

Events ignored_line(const std::string &state, const std::string &requested,
                    const std::string &recorded)
{
    return said("shared_CMIF_modify_profile_settings action: Ignore modify profile for auto apn. "
                "Connection status is " +
                state + " set apn is " + requested + " and apn in nvram is " + recorded);
}

TEST_F(QmiAutoApn, FollowsTheRecordAndTheConnection)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.state + ", " + row.recorded + ", " + row.requested);
        store::set(state_key, row.state);
        store::set(record_key, row.recorded);
        fill(profile.apn, row.requested);
        const Events line = row.branch == Branch::same ? same_line(row.state, row.requested)
                            : row.branch == Branch::ignored
                                ? ignored_line(row.state, row.requested, row.recorded)
                                : Events{};
        const Events rest = row.branch == Branch::ignored ? Events{} : exchange_and_check();
        const bool records = row.branch != Branch::ignored && row.state == "3";
        const Events recording =
            records ? did(std::string("set ") + record_key + "=" + row.requested) : Events{};

        expect_modify(0, {ready(), line, rest, recording}, 1);
        EXPECT_EQ(sent.has_value(), row.branch != Branch::ignored);
        EXPECT_EQ(store::value(record_key), records ? row.requested : row.recorded);
    }
}

TEST_F(QmiAutoApn, OrdinaryChangesNeitherReadNorWriteTheRecord)
{
    for (const int from_auto_apn : {0, 2, -1, 256}) {
        for (const Row &row : rows) {
            store::set(state_key, row.state);
            store::set(record_key, row.recorded);
            fill(profile.apn, row.requested);
            queues.reply(3, "");
            const Recorded run =
                record([&] { return shared_CMIF_modify_profile_settings(profile, from_auto_apn); });
            EXPECT_EQ(run.result, 0);
            EXPECT_TRUE(queues.take_request());
            for (const std::string &step : run.steps)
                EXPECT_EQ(step.find(record_key), std::string::npos) << step;
        }
    }
}

// Asked again after the exchange: the state that counts is the one that the daemon left.
TEST_F(QmiAutoApn, IsRecordedWhenTheChangeConnects)
{
    store::set(state_key, "1");
    calls::before("msgrcv", [] { store::set(state_key, "3"); });
    expect_modify(0, {sending(), did("set lte_set_auto_apn=internet")}, 1);
    EXPECT_EQ(store::value(record_key), "internet");
}

TEST_F(QmiAutoApn, IsNotRecordedWhenTheChangeDisconnects)
{
    store::set(state_key, "3");
    calls::before("msgrcv", [] { store::set(state_key, "1"); });
    expect_modify(0, {sending()}, 1);
    EXPECT_EQ(store::value(record_key), "");
}

TEST_F(QmiAutoApn, IsNotRecordedWhenReadinessIsLost)
{
    store::set(state_key, "3");
    calls::before("msgrcv", [] { write_file(qmi_ready_path, "off"); });
    expect_modify(0, {ready(), exchange(3, 312), ready("of")}, 1);
    EXPECT_EQ(store::value(record_key), "");
}

TEST_F(QmiAutoApn, IsNotRecordedAfterAFailedExchange)
{
    store::set(state_key, "3");
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_modify(row.result, {ready(), exchange_failing(row.step, 3, 312)}, 1);
        EXPECT_EQ(store::value(record_key), "");
    }
}

TEST_F(QmiAutoApn, TextsAreCheckedFirst)
{
    store::set(state_key, "3");
    store::set(record_key, "internet");
    fill(profile.apn, std::string(41, 'a'));
    expect_modify(5, {ready(), said(api + " apn length is larger than 40")}, 1);
}

TEST_F(QmiAutoApn, NumbersAreCorrectedBeforeTheRuleIsApplied)
{
    store::set(state_key, "3");
    store::set(record_key, "ims");
    profile.auth = 4;
    expect_modify(0,
                  {ready(), printed(api + " wrong auth value, set default auth == 0"),
                   ignored_line("3", "internet", "ims")},
                  1);
}

TEST_F(QmiAutoApn, TheLongestNamesAreComparedWhole)
{
    const std::string apn(40, 'a');
    fill(profile.apn, apn);
    store::set(state_key, "1");
    store::set(record_key, apn);
    expect_modify(0, {ready(), same_line("1", apn), exchange_and_check()}, 1);
    store::set(state_key, "3");
    store::set(record_key, "");
    expect_modify(0, {sending(), did(std::string("set lte_set_auto_apn=") + apn)}, 1);
    EXPECT_EQ(store::value(record_key), apn);
}

// Stored texts longer than any field damage nothing, and match nothing. The lines show 49
// characters of the state.
TEST_F(QmiAutoApn, LongStoredTextsMatchNothing)
{
    const std::string apn(40, 'a');
    fill(profile.apn, apn);
    store::set(state_key, std::string(5000, '3'));
    store::set(record_key, std::string(5000, 'a'));
    const Recorded run = record([&] { return shared_CMIF_modify_profile_settings(profile, 1); });
    EXPECT_EQ(run.result, 0);
    EXPECT_FALSE(queues.take_request());
    EXPECT_NE(run.output.find(" Connection status is " + std::string(49, '3') + " set apn is " +
                              apn + " and apn in nvram is " + apn),
              std::string::npos);
    EXPECT_EQ(store::value(record_key), std::string(5000, 'a'));
}

TEST_F(QmiAutoApn, StoredTextsAreNotFormats)
{
    store::set(state_key, "%s%n");
    store::set(record_key, "%d%s");
    expect_modify(0, {ready(), ignored_line("%s%n", "internet", "%d%s")}, 1);
}
} // namespace
