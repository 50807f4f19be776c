// What all QMI calls share: the readiness check, the exchange, its lines in both sinks.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/msg.h>

namespace
{
class QmiChannel : public QmiTest
{
protected:
    QmiChannel() { store::set("lte_qmi_apn", "internet"); }

    // The SIM status has no line of its own before the exchange.
    static int ask() { return shared_CMIF_get_sim_status(&answered_number); }

    static Events answered(const std::string &name)
    {
        return sequence({printed("shared_CMIF_get_sim_status : " + name),
                         printed("shared_CMIF_get_sim_status msgrcv succeeed!")});
    }

    static Events not_answered() { return printed("shared_CMIF_get_sim_status msgrcv failed..."); }

    void reply_status(std::int32_t status, size_t length) const
    {
        std::string payload(length, 'x');
        memcpy(payload.data(), &status, sizeof status);
        queues.reply(6, payload);
    }
};

size_t messages_on(int queue)
{
    msqid_ds status{};
    EXPECT_EQ(msgctl(queue, IPC_STAT, &status), 0);
    return status.msg_qnum;
}

TEST_F(QmiChannel, RequestsTravelWithTheirLengths)
{
    for (const QmiRequest &request : qmi_requests) {
        SCOPED_TRACE(request.name);
        queues.reply(request.code, "");
        EXPECT_EQ(record(request.call).result, 0);
        EXPECT_EQ(queues.take_reply().has_value(), request.code == 9); // no caller waits for that
        EXPECT_EQ(messages_on(queues.requests()), 1U);
        const std::optional<Message> sent = queues.take_request();
        ASSERT_TRUE(sent);
        EXPECT_EQ(sent->type, request.code);
        EXPECT_EQ(sent->payload.size(), static_cast<size_t>(request.length));
        if (request.code == 3)
            continue; // a profile: its bytes are not all zero
        EXPECT_EQ(sent->payload, std::string(sent->payload.size(), '\0'));
    }
}

TEST_F(QmiChannel, TheDocumentGivesTheLengthsOfRequests)
{
    std::istringstream document(read_file(CHANNELS_DOCUMENT));
    std::map<long, int> lengths;
    bool in_table = false;
    for (std::string line; std::getline(document, line);) {
        long code = 0;
        int length = 0;
        if (line.find("| bytes sent ") != std::string::npos)
            in_table = true;
        else if (line.empty())
            in_table = false;
        else if (in_table && sscanf(line.c_str(), "| %ld | %d,", &code, &length) == 2)
            lengths[code] = length;
    }
    std::map<long, int> sent;
    for (const QmiRequest &request : qmi_requests)
        sent[request.code] = request.length;
    EXPECT_EQ(lengths, sent);
}

TEST_F(QmiChannel, TakesAllStepsInOrder)
{
    reply_status(2, 4);
    expect_call(ask, 0, {ready(), exchange(6, 5), answered("SIM_READY")});
}

TEST_F(QmiChannel, TakesAllStepsWithTheTraceOff)
{
    store::set("debug_qmi_cmif", "0");
    reply_status(2, 4);
    expect_call(ask, 0, {ready(), exchange(6, 5), answered("SIM_READY")});
}

TEST_F(QmiChannel, TakesAllStepsWithTheLogOff)
{
    log_off();
    reply_status(2, 4);
    expect_call(ask, 0, {ready(), exchange(6, 5), answered("SIM_READY")});
    EXPECT_FALSE(file_exists(debug_log_path));
}

TEST_F(QmiChannel, PrintsOnlyTheOutcomeWithTraceAndLogOff)
{
    log_off();
    store::set("debug_qmi_cmif", "");
    reply_status(3, 4);
    EXPECT_EQ(record(ask).output, "shared_CMIF_get_sim_status : SIM_PIN\n"
                                  "shared_CMIF_get_sim_status msgrcv succeeed!\n");
}

TEST_F(QmiChannel, EndsAtAFailedStep)
{
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_call(ask, row.result, {ready(), exchange_failing(row.step, 6, 5), not_answered()});
    }
}

TEST_F(QmiChannel, EndsAtAFailedStepWithTheTraceOff)
{
    store::set("debug_qmi_cmif", "0");
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_call(ask, row.result, {ready(), exchange_failing(row.step, 6, 5), not_answered()});
    }
}

TEST_F(QmiChannel, AFailedReceivePrintsItsOwnError)
{
    // The failure is logged, with its time, before it is printed.
    calls::before("gettimeofday", [] { errno = ENOTTY; });
    for (const int error : {EIDRM, EINTR, E2BIG, EACCES}) {
        calls::script("msgrcv", {calls::fails(error)});
        const int before = calls::count("msgrcv");
        const Recorded run = record_with_errors(ask);
        EXPECT_EQ(run.result, 4);
        EXPECT_EQ(run.errors, std::string("msgrcv: ") + strerror(error) + "\n");
        EXPECT_EQ(calls::count("msgrcv"), before + 1); // never tried again
    }
}

TEST_F(QmiChannel, OnlyAFailedReceivePrintsAnError)
{
    for (const FailureRow &row : failures) {
        if (row.step == Failure::receive)
            continue;
        inject(row.step);
        EXPECT_EQ(record_with_errors(ask).errors, "");
    }
    reply_status(0, 4);
    EXPECT_EQ(record_with_errors(ask).errors, "");
}

TEST_F(QmiChannel, AFailedExchangeLeavesTheOutputUnchanged)
{
    for (const FailureRow &row : failures) {
        answered_number = 4711;
        inject(row.step);
        EXPECT_EQ(record(ask).result, row.result);
        EXPECT_EQ(answered_number, 4711);
        for (const QmiRequest &request : {qmi_requests[0], qmi_requests[5]}) {
            memset(answered_text, '~', sizeof answered_text);
            inject(row.step);
            EXPECT_EQ(record(request.call).result, row.result);
            EXPECT_EQ(std::string(answered_text, sizeof answered_text),
                      std::string(sizeof answered_text, '~'));
        }
    }
}

TEST_F(QmiChannel, AReplyOfAnotherTypeStays)
{
    queues.reply(5, "other");
    reply_status(2, 4);
    EXPECT_EQ(record(ask).result, 0);
    EXPECT_EQ(answered_number, 2);
    const std::optional<Message> left = queues.take_reply();
    ASSERT_TRUE(left);
    EXPECT_EQ(left->type, 5);
    EXPECT_EQ(left->payload, "other");
}

TEST_F(QmiChannel, TheFirstReplyOfItsTypeIsTaken)
{
    reply_status(3, 4);
    reply_status(4, 4);
    EXPECT_EQ(record(ask).result, 0);
    EXPECT_EQ(answered_number, 3);
    EXPECT_TRUE(queues.take_reply());
}

TEST_F(QmiChannel, RepliesOfAnyLengthUpTo316AreReceived)
{
    for (const size_t length : {4U, 5U, 311U, 312U, 313U, 314U, 315U, 316U}) {
        reply_status(static_cast<std::int32_t>(length), length);
        EXPECT_EQ(record(ask).result, 0) << length;
        EXPECT_EQ(answered_number, static_cast<int>(length));
    }
    queues.reply(6, ""); // the cleared request is what is read
    EXPECT_EQ(record(ask).result, 0);
    EXPECT_EQ(answered_number, 0);
}

TEST_F(QmiChannel, LongTextsWithoutAnEndDamageNothing)
{
    for (const QmiRequest &request : {qmi_requests[0], qmi_requests[5]})
        for (const size_t length : {312U, 313U, 316U}) {
            queues.reply(request.code, std::string(length, 'x'));
            EXPECT_EQ(record(request.call).result, 0) << request.name << ", " << length;
        }
}

TEST_F(QmiChannel, AReplyOf317FailsTheReceiveAndStays)
{
    reply_status(2, 317);
    answered_number = 4711;
    const Recorded run = record_with_errors(ask);
    EXPECT_EQ(run.result, 4);
    EXPECT_EQ(run.errors, std::string("msgrcv: ") + strerror(E2BIG) + "\n");
    EXPECT_EQ(answered_number, 4711);
    EXPECT_EQ(messages_on(queues.replies()), 1U);
}

TEST_F(QmiChannel, AQueueRemovedDuringTheWaitFailsTheReceive)
{
    const ScriptedDaemon daemon(queues, [&](const Message &) { queues.remove_replies(); });
    const Recorded run = record_with_errors(ask);
    EXPECT_EQ(run.result, 4);
    // Identifier removed, or invalid if the receive began after that.
    EXPECT_TRUE(run.errors == std::string("msgrcv: ") + strerror(EIDRM) + "\n" ||
                run.errors == std::string("msgrcv: ") + strerror(EINVAL) + "\n")
        << run.errors;
}

TEST_F(QmiChannel, QueuesAreCreatedAndLookedUpAgain)
{
    for (int turn = 0; turn < 2; ++turn) {
        queues.remove_requests();
        queues.remove_replies();
        inject(Failure::receive);
        EXPECT_EQ(record_with_errors(ask).result, 4);
        EXPECT_EQ(queue_mode(1158), 0666U);
        EXPECT_EQ(queue_mode(1159), 0666U);
        EXPECT_EQ(messages_on(calls::real_msgget(1158, 0)), 1U);
        EXPECT_EQ(messages_on(calls::real_msgget(1159, 0)), 0U);
        for (const key_t key : {1158, 1159})
            EXPECT_EQ(msgctl(calls::real_msgget(key, 0), IPC_RMID, nullptr), 0);
    }
}

TEST_F(QmiChannel, AnIdentifierOfZeroIsValid)
{
    calls::script("msgget", {calls::yields(0), calls::yields(0)});
    calls::script("msgsnd", {calls::yields(0)});
    calls::script("msgrcv", {calls::yields(4)});
    const Recorded run = record(ask);
    EXPECT_EQ(run.result, 0);
    EXPECT_NE(run.output.find("key msqID = (0)\n"), std::string::npos);
    EXPECT_NE(run.output.find("key msg_recv_ID = (0)\n"), std::string::npos);
}
} // namespace
