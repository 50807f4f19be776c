// One call that makes several requests, each after the answer to the one before.
#include "client/unanswered.h"
#include "queue_fixture.h"

#include <csignal>

namespace
{

constexpr RequestCode first{Channel::at, CMIF_AT_ENTER_PIN};
constexpr RequestCode second{Channel::at, CMIF_AT_GET_PIN_COUNTERS};

class FurtherRequests : public Queue
{
protected:
    static int replies() { return msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666); }

    int ask(int code) const
    {
        cmif_msg record{};
        record.mod_id = code;
        EXPECT_EQ(msgsnd(queue_, &record, CMIF_AT_PAYLOAD, 0), 0);
        while (msgrcv(replies(), &record, CMIF_AT_PAYLOAD, code, 0) == -1)
            continue;
        return record.ret_code;
    }

    // Takes the oldest request and answers it; its code.
    int answer(int ret_code) const
    {
        cmif_msg record{};
        EXPECT_NE(msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, 0), -1);
        record.ret_code = ret_code;
        EXPECT_EQ(msgsnd(replies(), &record, CMIF_AT_PAYLOAD, 0), 0);
        return static_cast<int>(record.mod_id);
    }

    Call asking_twice() const
    {
        return {.request = enter_pin,
                .body =
                    [this](Json &output) {
                        output["first"] = ask(first.code);
                        return ask(second.code);
                    },
                .further = {second}};
    }
};

TEST_F(FurtherRequests, GetTheirOwnAnswers)
{
    for (const RequestCode stale : {first, second}) {
        cmif_msg record{};
        record.mod_id = stale.code;
        record.ret_code = 99;
        ASSERT_EQ(msgsnd(replies(), &record, CMIF_AT_PAYLOAD, 0), 0);
    }
    const Child daemon([this] {
        answer(5);
        answer(6);
        pause();
    });
    const Answer both = call({.timeout = 10}, asking_twice());
    EXPECT_EQ(both.output["first"], 5);
    EXPECT_EQ(both.result, 6);
    EXPECT_EQ(Unanswered().count(first), 0);
    EXPECT_EQ(Unanswered().count(second), 0);
}

TEST_F(FurtherRequests, AreAllLockedBeforeTheFirst)
{
    const CodeLock lock = lock_codes({}, {second});
    const Failure failure = failure_of(asking_twice(), {.timeout = 0.2});
    EXPECT_NE(std::string(failure.what()).find("nothing was sent"), std::string::npos)
        << failure.what();
    EXPECT_EQ(letters(), "");
}

TEST_F(FurtherRequests, AreWithdrawnAndNamedWhenTheyAreNotAnswered)
{
    const Child daemon([this] {
        answer(5);
        pause();
    });
    const Failure failure = failure_of(asking_twice(), {.timeout = 0.5});
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 4) within 0.5 s; the "
                                 "daemon had not picked up the request; it was withdrawn");
    EXPECT_EQ(Unanswered().count(first), 0);
    EXPECT_EQ(Unanswered().count(second), 0);
}

TEST_F(FurtherRequests, LeaveNothingQueuedWhenTheirCallIsKilled)
{
    const Child daemon([this] {
        answer(5);
        msqid_ds state{};
        do
            msgctl(queue_, IPC_STAT, &state);
        while (state.msg_qnum == 0);
        kill(state.msg_lspid, SIGKILL);
        pause();
    });
    EXPECT_STREQ(failure_of(asking_twice(), {.timeout = 10}).what(),
                 "the call call was ended by signal 9");
    EXPECT_EQ(Unanswered().count(first), 0);
    EXPECT_EQ(Unanswered().count(second), 0);
    msqid_ds state{};
    ASSERT_EQ(msgctl(queue_, IPC_STAT, &state), 0);
    EXPECT_EQ(state.msg_qnum, 0U);
}

} // namespace
