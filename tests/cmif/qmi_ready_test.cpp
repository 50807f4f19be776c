// The readiness check: which marker files count, and that nothing is sent without one.
#include "cmif/cmif.h"
#include "tests/support/bytes.h"
#include "tests/support/files.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{
class QmiReady : public QmiTest
{
protected:
    QmiReady() { store::set("lte_qmi_apn", "internet"); }

    // The SIM status has no line of its own before the check.
    static int ask() { return shared_CMIF_get_sim_status(&answered_number); }
};

// The marker file's bytes: what the check reads of them, and whether that is ready.
struct Marker {
    std::string bytes, read;
    bool ready;
};

const Marker markers[] = {
    {"on", "on", true},  {"on\n", "on", true}, {"onward", "on", true}, {"on off", "on", true},
    {"", "", false},     {"o", "o", false},    {"On", "On", false},    {"ON", "ON", false},
    {"oN", "oN", false}, {"off", "of", false}, {" on", " o", false},   {"no", "no", false},
    {"1", "1", false},
};

TEST_F(QmiReady, TwoBytesOfTheMarkerDecide)
{
    for (const Marker &marker : markers) {
        SCOPED_TRACE(marker.bytes);
        write_file(qmi_ready_path, marker.bytes);
        if (marker.ready) {
            queues.reply(6, bytes_of(2));
            expect_call(ask, 0,
                        {ready(marker.read), exchange(6, 5),
                         printed("shared_CMIF_get_sim_status : SIM_READY"),
                         printed("shared_CMIF_get_sim_status msgrcv succeeed!")});
        } else {
            expect_call(ask, 1, {ready(marker.read)});
        }
    }
}

TEST_F(QmiReady, WithoutAMarkerNoQueueIsTouched)
{
    queues.remove_requests();
    queues.remove_replies();
    std::filesystem::remove(qmi_ready_path);
    for (const QmiRequest &request : qmi_requests) {
        const Recorded run = record(request.call);
        EXPECT_EQ(run.result, 1) << request.name;
        EXPECT_EQ(run.output.find("_check_msg_thread_ready"), std::string::npos);
    }
    EXPECT_EQ(calls::count("msgget") + calls::count("msgsnd") + calls::count("msgrcv"), 0);
    EXPECT_FALSE(queue_exists(1158));
    EXPECT_FALSE(queue_exists(1159));
}

TEST_F(QmiReady, ADirectoryAsMarkerIsNotReady)
{
    std::filesystem::remove(qmi_ready_path);
    std::filesystem::create_directory(qmi_ready_path);
    expect_call(ask, 1, {ready("")});
}

// No process writes to it: the call doesn't wait.
TEST_F(QmiReady, AFifoAsMarkerIsNotReady)
{
    std::filesystem::remove(qmi_ready_path);
    ASSERT_EQ(mkfifo(qmi_ready_path, 0600), 0);
    expect_call(ask, 1, {ready("")});
}

TEST_F(QmiReady, FilesAreClosedOnEveryPath)
{
    const long before = open_descriptors();
    for (const Marker &marker : markers) {
        write_file(qmi_ready_path, marker.bytes);
        for (const QmiRequest &request : qmi_requests) {
            inject(Failure::send);
            (void)record(request.call);
            EXPECT_EQ(open_descriptors(), before) << request.name << ", " << marker.bytes;
        }
    }
}
} // namespace
