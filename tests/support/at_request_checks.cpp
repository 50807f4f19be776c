#include "at_request.h"
#include "memory_store.h"
#include "queue_pair.h"
#include "system_calls.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <gtest/gtest.h>

namespace
{
// The steps before `step` and that step, then one line more.
Lines cut_after(const Lines &steps, const std::string &step, const std::string &line)
{
    const auto found = std::find(steps.begin(), steps.end(), step);
    Lines cut(steps.begin(), found == steps.end() ? found : found + 1);
    cut.push_back(line);
    return cut;
}

// One call with a daemon that answers `ret_code` and nothing else.
Recorded run_with_daemon(const AtRequest &request, const QueuePair &queues, int ret_code)
{
    const ScriptedDaemon daemon(queues, [&](const Message &message) {
        if (request.waits)
            queues.reply(message.type, at_reply(ret_code));
    });
    return record(request.call);
}

void expect_sent(const AtRequest &request)
{
    const std::vector<Message> sent = calls::sent();
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent.back().type, request.code);
    EXPECT_EQ(sent.back().payload, at_payload(request.fields));
}

// A look-up or the send failed: nothing happened after it.
void expect_end(const AtRequest &request, int result, const Lines &steps)
{
    const Recorded run = record(request.call);
    EXPECT_EQ(run.result, result);
    EXPECT_EQ(run.output, output_of(steps));
    EXPECT_EQ(run.steps, with_switch_reads(steps));
}
} // namespace

void expect_traced_round_trip(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    const Lines steps = steps_of(request, queues.requests());
    const Recorded first = run_with_daemon(request, queues, 0);
    EXPECT_EQ(first.result, 0);
    EXPECT_EQ(first.output, output_of(steps));
    EXPECT_EQ(first.steps, with_switch_reads(steps));
    expect_sent(request);
    const Recorded second = run_with_daemon(request, queues, 0);
    EXPECT_EQ(second.output, output_of(steps));
    EXPECT_EQ(second.steps, steps);
    EXPECT_FALSE(queues.take_reply().has_value());
}

void expect_silent_round_trip(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "0");
    const QueuePair queues = QueuePair::at();
    const Lines steps = steps_of(request, queues.requests());
    const Recorded first = run_with_daemon(request, queues, 0);
    EXPECT_EQ(first.output, "");
    EXPECT_EQ(first.steps, without_prints(with_switch_reads(steps)));
    expect_sent(request);
    const Recorded second = run_with_daemon(request, queues, 0);
    EXPECT_EQ(second.output, "");
    EXPECT_EQ(second.steps, without_prints(steps));
}

void expect_request_queue_failure(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "1");
    calls::script("msgget", {calls::fails(ENOSPC)});
    expect_end(request, 2,
               {"msgget(899, 01666)", print_step(request, request.words->request_queue_failed, 0)});
}

void expect_reply_queue_failure(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    calls::script("msgget", {calls::real, calls::fails(EACCES)});
    expect_end(request, request.no_reply_queue,
               {"msgget(899, 01666)", "msgget(900, 01666)",
                print_step(request, request.words->reply_queue_failed, 0)});
    EXPECT_FALSE(queues.take_request().has_value());
}

void expect_send_failure(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    queues.reply(request.code, at_reply(0));
    calls::script("msgsnd", {calls::fails(EINTR)});
    expect_end(request, 3,
               cut_after(steps_of(request, queues.requests()),
                         transfer_step("msgsnd", 899, request.code),
                         print_step(request, request.words->send_failed, 0)));
    EXPECT_TRUE(queues.take_reply().has_value());
}

void expect_silent_failures(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "0");
    const QueuePair queues = QueuePair::at();
    const auto expect_result = [&](int result) {
        const Recorded run = record(request.call);
        EXPECT_EQ(run.result, result);
        EXPECT_EQ(run.output, "");
    };
    calls::script("msgget", {calls::fails(ENOSPC)});
    expect_result(2);
    if (request.waits) {
        calls::script("msgget", {calls::real, calls::fails(ENOSPC)});
        expect_result(request.no_reply_queue);
    }
    calls::script("msgsnd", {calls::fails(EIDRM)});
    expect_result(3);
    EXPECT_FALSE(queues.take_request().has_value());
}

void expect_receive_retries(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    const std::vector<int> errors{EINTR, EIDRM, EINTR, EINVAL, E2BIG};
    std::vector<calls::Outcome> outcomes;
    outcomes.reserve(errors.size());
    for (const int error : errors)
        outcomes.push_back(calls::fails(error));
    calls::script("msgrcv", outcomes);

    Lines steps;
    const std::string receive = transfer_step("msgrcv", 900, request.code);
    for (const std::string &step : steps_of(request, queues.requests())) {
        if (step == receive)
            for (size_t i = 0; i < errors.size(); ++i)
                steps =
                    join({steps, {receive, print_step(request, request.words->receive_failed, 0)}});
        steps.push_back(step);
    }
    const Recorded run = run_with_daemon(request, queues, 0);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, output_of(steps));
    EXPECT_EQ(without_switch_reads(run.steps), steps);
}

void expect_codes_passed_through(const AtRequest &request)
{
    SCOPED_TRACE(request.name);
    store::set("debug_at_cmif", "0");
    const QueuePair queues = QueuePair::at();
    const Lines steps = without_prints(steps_of(request, queues.requests()));
    EXPECT_EQ(run_with_daemon(request, queues, 0).result, 0);
    for (const int code : {1, 2, 3, -1, 5, 77, -5, INT_MAX, INT_MIN}) {
        const Recorded run = run_with_daemon(request, queues, code);
        EXPECT_EQ(run.result, code);
        EXPECT_EQ(run.steps, steps); // the follow-up does not depend on the code
    }
}
