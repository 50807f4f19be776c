#include "qmi_call.h"

#include "files.h"
#include "memory_store.h"
#include "system_calls.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace
{
const std::string exchange_name = "cmif_send_to_msgqueue";

std::string log_line(const std::string &line)
{
    return std::string("[CMIF-QMI][") + debug_log_stamp + "]" + line + "\n";
}

std::string bracketed(const std::string &text)
{
    return "[" + exchange_name + "] " + text;
}

Events look_ups(size_t count)
{
    const Events both[] = {did("msgget(1158, 01666)"), did("msgget(1159, 01666)")};
    return sequence({both, both + count});
}
} // namespace

char answered_text[512];
int answered_number;

const std::vector<QmiRequest> qmi_requests = {
    {"shared_CMIF_get_device_rev_id", [] { return shared_CMIF_get_device_rev_id(answered_text); },
     1, 101},
    {"shared_CMIF_modify_profile_settings",
     [] { return shared_CMIF_modify_profile_settings({}, 0); }, 3, 312},
    {"shared_CMIF_start_network_interface", shared_CMIF_start_network_interface, 4, 5},
    {"shared_CMIF_stop_network_interface", shared_CMIF_stop_network_interface, 5, 5},
    {"shared_CMIF_get_sim_status", [] { return shared_CMIF_get_sim_status(&answered_number); }, 6,
     5},
    {"shared_CMIF_get_ps_service", [] { return shared_CMIF_get_ps_service(answered_text); }, 8, 51},
    {"shared_CMIF_set_CM_qfirehose", shared_CMIF_set_CM_qfirehose, 9, 5},
};

Events sequence(const std::vector<Events> &parts)
{
    Events all;
    for (const Events &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Events did(const std::string &step)
{
    return {{step, ""}};
}

Events printed(const std::string &line)
{
    return {{"print " + line, ""}};
}

Events said(const std::string &line)
{
    return said(line, line);
}

Events said(const std::string &line, const std::string &logged)
{
    return {{"print " + line, log_line(logged)}};
}

Events traced(const std::string &line)
{
    return {{"print [CMIF-QMI] - " + line, log_line(line), true}};
}

Events caller(const std::string &api)
{
    const std::string line = "[" + api + "] called by pid(" + std::to_string(getpid()) +
                             ") - process name[" + caller_name() + "]";
    return sequence({traced(line), {{"print ", "", true}}});
}

Events ready(const std::string &bytes)
{
    return {{"print [CMIF-QMI] - [_check_msg_thread_ready] - [" + bytes + "]", "", true},
            {"print ", "", true}};
}

void inject(Failure step)
{
    switch (step) {
    case Failure::request_queue:
        return calls::script("msgget", {calls::fails(ENOSPC)});
    case Failure::reply_queue:
        return calls::script("msgget", {calls::real, calls::fails(ENOSPC)});
    case Failure::send:
        return calls::script("msgsnd", {calls::fails(EACCES)});
    case Failure::receive:
        return calls::script("msgrcv", {calls::fails(EIDRM)});
    }
}

std::string caller_name()
{
    const std::string line = read_file("/proc/" + std::to_string(getpid()) + "/cmdline");
    return line.substr(0, std::min<size_t>(line.find('\0'), 32));
}

Lines without_reads(const Lines &steps)
{
    Lines kept;
    for (const std::string &step : steps)
        if (step.rfind("get ", 0) != 0 && step.rfind("match ", 0) != 0)
            kept.push_back(step);
    return kept;
}

long switch_reads(const Recorded &run)
{
    return std::count(run.steps.begin(), run.steps.end(), "get debug_qmi_cmif");
}

QmiTest::QmiTest() : log_(std::make_unique<DebugLogFile>())
{
    store::set("debug_qmi_cmif", "1");
    write_file(qmi_ready_path, "on");
}

QmiTest::~QmiTest() = default;

void QmiTest::log_off()
{
    log_.reset();
    logged_ = 0;
    store::set("debug_lte_enable", "0");
    (void)record(shared_debug_lte_mutex_init);
}

Events QmiTest::exchange_failing(Failure step, long code, int length) const
{
    const std::string number = "(" + std::to_string(code) + ")";
    const Events start = traced(bracketed("start..."));
    const Events no_queue = traced(bracketed("can't get msqID"));
    const Events send =
        sequence({traced(bracketed("key msqID = (" + std::to_string(queues.requests()) + ")")),
                  traced(bracketed("key msg_recv_ID = (" + std::to_string(queues.replies()) + ")")),
                  did(calls::transfer_step("msgsnd", "1158", code, static_cast<size_t>(length)))});
    switch (step) {
    case Failure::request_queue:
        return sequence({start, look_ups(1), no_queue});
    case Failure::reply_queue:
        return sequence({start, look_ups(2), no_queue});
    case Failure::send:
        return sequence({start, look_ups(2), send, traced(exchange_name + " msgsnd failed...")});
    case Failure::receive:
        break;
    }
    return sequence({start, look_ups(2), send, traced(bracketed("rcv_id = " + number)),
                     did(calls::transfer_step("msgrcv", "1159", code, 316)),
                     traced(number + " msgrcv failed...")});
}

Events QmiTest::exchange(long code, int length) const
{
    Events events = exchange_failing(Failure::receive, code, length);
    events.pop_back();
    return sequence({events, traced("(" + std::to_string(code) + ") msgrcv succeeed!")});
}

void QmiTest::expect_call(const std::function<int()> &call, int result,
                          const std::vector<Events> &events)
{
    const bool trace = store::value("debug_qmi_cmif") == "1";
    Lines steps;
    std::string log;
    for (const Event &event : sequence(events)) {
        if (!event.step.empty() && (trace || !event.traced))
            steps.push_back(event.step);
        log += log_ ? event.log : "";
    }

    const Recorded run = record(call);
    EXPECT_EQ(run.result, result);
    EXPECT_EQ(without_reads(run.steps), steps);

    const std::string all = log_ ? DebugLogFile::text() : "";
    EXPECT_EQ(all.substr(logged_), log);
    logged_ = all.size();
}
