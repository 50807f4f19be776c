// A QMI call as the events that it should consist of, and the fixture in which it is made.
//
//     TEST_F(QmiTest, Start)
//     {
//         store::set("lte_qmi_apn", "internet");
//         queues.reply(4, "");
//         expect_call(shared_CMIF_start_network_interface, 0,
//                     {caller(start), ready(), exchange(4, 5), said(start + " msgrcv succeeed!")});
//     }
//
// The fixture: real queues, the daemon ready, trace and debug log on.
#ifndef TESTS_SUPPORT_QMI_CALL_H
#define TESTS_SUPPORT_QMI_CALL_H

#include "debug_log_file.h"
#include "queue_pair.h"
#include "record.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

// One event: a step of a recording (a system call, a line on standard output), a line of the log,
// or both. A traced one is printed only with the switch on.
struct Event {
    std::string step;
    std::string log;
    bool traced = false;
};
using Events = std::vector<Event>;

Events did(const std::string &step);     // a system call
Events printed(const std::string &line); // standard output only
Events said(const std::string &line);    // both, the log's with prefix and time
Events said(const std::string &line, const std::string &logged); // where the two differ
Events traced(const std::string &line);                          // both, each with its prefix
Events caller(const std::string &api);                           // the caller trace
Events ready(const std::string &bytes = "on"); // the readiness check, with what it reads

Events sequence(const std::vector<Events> &parts);

// A call that sends something, and what it sends. Outputs go to the two below.
struct QmiRequest {
    std::string name;
    std::function<int()> call;
    long code;
    int length;
};
extern const std::vector<QmiRequest> qmi_requests;
extern char answered_text[512];
extern int answered_number;

// The ways in which an exchange fails.
enum class Failure { request_queue, reply_queue, send, receive };

struct FailureRow {
    Failure step;
    int result;
};
constexpr FailureRow failures[] = {{Failure::request_queue, 2},
                                   {Failure::reply_queue, 2},
                                   {Failure::send, 3},
                                   {Failure::receive, 4}};

// Makes the next exchange fail.
void inject(Failure step);

// The first argument of this process's command line, as far as the caller trace shows it.
std::string caller_name();

// Recorded steps but for reads of the store.
Lines without_reads(const Lines &steps);

// How often the switch was read.
long switch_reads(const Recorded &run);

class QmiTest : public testing::Test
{
protected:
    QmiTest();
    ~QmiTest() override;

    // The exchange, whole or up to a failure.
    [[nodiscard]] Events exchange(long code, int length) const;
    [[nodiscard]] Events exchange_failing(Failure step, long code, int length) const;

    // Ends the debug log.
    void log_off();

    // Makes the call, and compares its result, its steps in order, and what it logged.
    void expect_call(const std::function<int()> &call, int result,
                     const std::vector<Events> &events);

    QueuePair queues = QueuePair::qmi();

private:
    std::unique_ptr<DebugLogFile> log_;
    size_t logged_ = 0;
};

#endif
