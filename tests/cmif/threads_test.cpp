// Several threads at once: getters, requests with different codes, QMI calls, the debug log. Most
// telling under the thread sanitizer.
#include "cmif/cmif.h"
#include "tests/support/at_request.h"
#include "tests/support/debug_log_file.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/redirect.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{
constexpr int turns = 60;

// One thread's work; false when it got a wrong answer.
using Work = std::function<bool()>;

// Every piece of work in a thread of its own, many times; how many turns went wrong.
int failures_of(const std::vector<Work> &all)
{
    const Redirect silent(STDOUT_FILENO);
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (const Work &work : all)
        threads.emplace_back([&failures, work] {
            for (int turn = 0; turn < turns; ++turn)
                failures += work() ? 0 : 1;
        });
    for (std::thread &thread : threads)
        thread.join();
    return failures;
}

struct Getter {
    int (*get)(char *);
    const char *key;
};

const Getter getters[] = {
    {shared_CMIF_get_mobileIMEI, "lte_mobile_imei"},
    {shared_CMIF_get_mobileIMSI, "lte_mobile_imsi"},
    {shared_CMIF_get_mobileRSSI, "lte_query_network_rssi"},
    {shared_CMIF_get_mobileChannelNumber, "lte_query_network_info_channel"},
    {shared_CMIF_GetOperatorLongName, "lte_operator_select_operator_longname"},
};

bool read_all()
{
    bool right = true;
    for (const Getter &getter : getters) {
        char value[256];
        right = getter.get(value) == 0 && strcmp(value, getter.key) == 0 && right;
    }
    int mode = -1;
    return shared_CMIF_get_mobileNetworkMode(&mode) == 0 && mode == 2 && right;
}

// What these tests publish: each key its own name.
void publish()
{
    for (const Getter &getter : getters)
        store::set(getter.key, getter.key);
    store::set("lte_network_search_mode", "2");
    store::set("lte_sim_pin_mode", "1");
    store::set("debug_at_cmif", "1");
    store::set("debug_qmi_cmif", "1");
    write_file(qmi_ready_path, "on");
}

bool query_pin_mode()
{
    char mode[256];
    return shared_CMIF_get_mobileSimPINMode(mode) == 108 && strcmp(mode, "1") == 0;
}

// Each with a code of its own; the daemon answers with 100 and the code.
const std::vector<Work> at_requests = {
    [] { return shared_CMIF_set_timezone() == 101; },
    [] { return shared_CMIF_set_mobileNetworkMode(1) == 102; },
    [] { return shared_CMIF_set_DomainServiceStatus(1) == 107; },
    query_pin_mode,
    [] { return shared_CMIF_set_EntermobilePIN("1234") == 112; },
    [] { return shared_CMIF_set_ChangemobileSimPIN("1234", "4321") == 113; },
};

ScriptedDaemon::Script answer_at(const QueuePair &queues)
{
    return [&queues](const Message &request) {
        queues.reply(request.type, at_reply(static_cast<int>(100 + request.type)));
    };
}

// The daemon answers with its request's code in each byte of a number, or of a text.
const std::vector<Work> qmi_calls = {
    [] {
        int status = 0;
        return shared_CMIF_get_sim_status(&status) == 0 && status == 0x06060606;
    },
    [] {
        char service[50];
        return shared_CMIF_get_ps_service(service) == 0 && service[0] == '\x8';
    },
    [] {
        char revision[100];
        return shared_CMIF_get_device_rev_id(revision) == 0 && revision[0] == '\x1';
    },
    [] { return shared_CMIF_stop_network_interface() == 0; },
    [] {
        qmi_profile profile;
        return shared_CMIF_get_profile_settings(&profile) == 0;
    },
};

ScriptedDaemon::Script answer_qmi(const QueuePair &queues)
{
    return [&queues](const Message &request) {
        queues.reply(request.type, std::string(4, static_cast<char>(request.type)));
    };
}

bool write_log()
{
    shared_debug_lte_write_log_file("%s\n", std::string(40, 'x').c_str());
    return true;
}

template <class... Lists>
std::vector<Work> together(const Lists &...lists)
{
    std::vector<Work> all;
    (all.insert(all.end(), lists.begin(), lists.end()), ...);
    return all;
}

TEST(Threads, MayCallGettersAtOnce)
{
    publish();
    EXPECT_EQ(failures_of(std::vector<Work>(8, read_all)), 0);
}

TEST(Threads, MayMakeRequestsWithDifferentCodesAtOnce)
{
    publish();
    const QueuePair queues = QueuePair::at();
    ScriptedDaemon daemon(queues, answer_at(queues));
    EXPECT_EQ(failures_of(at_requests), 0);
    EXPECT_EQ(daemon.requests().size(), at_requests.size() * turns);
    EXPECT_FALSE(queues.take_reply());
}

TEST(Threads, MayMakeQmiCallsWithDifferentCodesAtOnce)
{
    publish();
    const DebugLogFile log;
    const QueuePair queues = QueuePair::qmi();
    ScriptedDaemon daemon(queues, answer_qmi(queues));
    EXPECT_EQ(failures_of(qmi_calls), 0);
    EXPECT_EQ(daemon.requests().size(), (qmi_calls.size() - 1) * turns);
    EXPECT_FALSE(queues.take_reply());
}

TEST(Threads, MayWriteTheLogAtOnce)
{
    const DebugLogFile log;
    EXPECT_EQ(failures_of(std::vector<Work>(8, write_log)), 0);
    std::string all;
    for (int line = 0; line < 8 * turns; ++line)
        all += std::string(40, 'x') + '\n';
    EXPECT_EQ(DebugLogFile::text(), all);
}

TEST(Threads, MayCallEverythingAtOnce)
{
    publish();
    const DebugLogFile log;
    const QueuePair at_queues = QueuePair::at();
    const QueuePair qmi_queues = QueuePair::qmi();
    const ScriptedDaemon at_daemon(at_queues, answer_at(at_queues));
    const ScriptedDaemon qmi_daemon(qmi_queues, answer_qmi(qmi_queues));
    const std::vector<Work> readers(2, read_all), writers(2, write_log);
    EXPECT_EQ(failures_of(together(at_requests, qmi_calls, readers, writers)), 0);
}
} // namespace
