// The status calls: device revision, SIM status and packet-switched service.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{
const std::string revision = "shared_CMIF_get_device_rev_id";
const std::string sim = "shared_CMIF_get_sim_status";
const std::string service = "shared_CMIF_get_ps_service";

int get_revision()
{
    return shared_CMIF_get_device_rev_id(answered_text);
}

int get_sim()
{
    return shared_CMIF_get_sim_status(&answered_number);
}

int get_service()
{
    return shared_CMIF_get_ps_service(answered_text);
}

class QmiStatus : public QmiTest
{
protected:
    QmiStatus() { memset(answered_text, '~', sizeof answered_text); }

    static Events received(const std::string &api) { return printed(api + " msgrcv succeeed!"); }
    static Events not_received(const std::string &api)
    {
        return printed(api + " msgrcv failed...");
    }

    // The first bytes are the answer; what follows the bound is untouched.
    static void expect_answer(const std::string &bytes, size_t bound)
    {
        EXPECT_EQ(std::string(answered_text, bytes.size()), bytes);
        EXPECT_EQ(std::string(answered_text + bound, sizeof answered_text - bound),
                  std::string(sizeof answered_text - bound, '~'));
    }
};

std::string number_payload(std::int32_t number, size_t length = 312)
{
    std::string payload(length, '\xff');
    memcpy(payload.data(), &number, sizeof number);
    return payload;
}

TEST_F(QmiStatus, DeviceRevisionIsTheReply)
{
    queues.reply(1, std::string("REV 1.2\0more", 12));
    expect_call(get_revision, 0, {caller(revision), ready(), exchange(1, 101), received(revision)});
    expect_answer(std::string("REV 1.2\0", 8), 100);
}

TEST_F(QmiStatus, DeviceRevisionIsCutAtItsBound)
{
    for (const size_t length : {0U, 1U, 98U, 99U, 100U, 101U, 200U, 311U, 312U, 316U}) {
        memset(answered_text, '~', sizeof answered_text);
        queues.reply(1, std::string(length, 'r'));
        EXPECT_EQ(record(get_revision).result, 0);
        expect_answer(length < 100 ? std::string(length, 'r') + '\0' : std::string(100, 'r'), 100);
    }
}

TEST_F(QmiStatus, DeviceRevisionRecordsItsCallerBeforeItRefusesNull)
{
    std::filesystem::remove(qmi_ready_path);
    expect_call([] { return shared_CMIF_get_device_rev_id(nullptr); }, 5, {caller(revision)});
}

TEST_F(QmiStatus, DeviceRevisionFails)
{
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_call(get_revision, row.result,
                    {caller(revision), ready(), exchange_failing(row.step, 1, 101),
                     not_received(revision)});
        expect_answer("", 0);
    }
    std::filesystem::remove(qmi_ready_path);
    expect_call(get_revision, 1, {caller(revision)});
    expect_answer("", 0);
}

TEST_F(QmiStatus, SimStatusIsPrintedByName)
{
    const std::string names[] = {"SIM_ABSENT", "SIM_NOT_READY", "SIM_READY",
                                 "SIM_PIN",    "SIM_PUK",       "SIM_NETWORK_PERSONALIZATION",
                                 "SIM_BAD"};
    for (int status = 0; status < 7; ++status) {
        queues.reply(6, number_payload(status));
        expect_call(get_sim, 0,
                    {ready(), exchange(6, 5), printed(sim + " : " + names[status]), received(sim)});
        EXPECT_EQ(answered_number, status);
    }
}

TEST_F(QmiStatus, UnknownSimStatusIsStoredUnchanged)
{
    std::vector<std::string> outputs;
    for (const int status : {7, -1, 8, 100, INT_MAX, INT_MIN}) {
        queues.reply(6, number_payload(status));
        const Recorded run = record(get_sim);
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(answered_number, status);
        outputs.push_back(run.output.substr(run.output.find(sim + " : ")));
    }
    for (const std::string &output : outputs)
        EXPECT_EQ(output, outputs.front());
    for (const char *name : {"ABSENT", "READY", "PIN", "PUK", "PERSONALIZATION", "BAD"})
        EXPECT_EQ(outputs.front().find(name), std::string::npos);
    EXPECT_EQ(outputs.front().find("\n" + sim + " msgrcv succeeed!\n"), outputs.front().find('\n'));
}

TEST_F(QmiStatus, SimStatusFails)
{
    answered_number = 4711;
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_call(get_sim, row.result,
                    {ready(), exchange_failing(row.step, 6, 5), not_received(sim)});
    }
    std::filesystem::remove(qmi_ready_path);
    expect_call(get_sim, 1, {});
    EXPECT_EQ(answered_number, 4711);
}

TEST_F(QmiStatus, ServiceIsTheReply)
{
    queues.reply(8, std::string("LTE attached %s%n\0more", 22));
    expect_call(
        get_service, 0,
        {ready(), exchange(8, 51), printed(service + " : LTE attached %s%n"), received(service)});
    expect_answer(std::string("LTE attached %s%n\0", 18), 50);
}

TEST_F(QmiStatus, ServiceIsCutAtItsBound)
{
    for (const size_t length : {0U, 1U, 48U, 49U, 50U, 51U, 200U, 311U, 312U, 316U}) {
        memset(answered_text, '~', sizeof answered_text);
        queues.reply(8, std::string(length, 's'));
        const Recorded run = record(get_service);
        EXPECT_EQ(run.result, 0);
        expect_answer(length < 50 ? std::string(length, 's') + '\0' : std::string(50, 's'), 50);
        if (length < 312) { // printed whole, though not copied whole
            EXPECT_NE(run.output.find(service + " : " + std::string(length, 's') + "\n"),
                      std::string::npos);
        }
    }
}

TEST_F(QmiStatus, ServiceFails)
{
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_call(get_service, row.result,
                    {ready(), exchange_failing(row.step, 8, 51), not_received(service)});
    }
    std::filesystem::remove(qmi_ready_path);
    expect_call(get_service, 1, {});
    expect_answer("", 0);
}

// Neither records its caller.
TEST_F(QmiStatus, SimStatusAndServiceRefuseNull)
{
    expect_call([] { return shared_CMIF_get_sim_status(nullptr); }, 5, {});
    expect_call([] { return shared_CMIF_get_ps_service(nullptr); }, 5, {});
    EXPECT_EQ(calls::count("msgget"), 0);
}
} // namespace
