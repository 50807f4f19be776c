// The doctor's findings in queues and among callers, each with the problem made for real.
#include "client/code_lock.h"
#include "client/unanswered.h"
#include "doctor_fixture.h"

#include <csignal>
#include <sys/sem.h>
#include <unistd.h>

namespace
{

TEST_F(Doctor, FindsMissingQueues)
{
    at_.reset();
    msgctl(queue(899), IPC_RMID, nullptr);
    msgctl(queue(900), IPC_RMID, nullptr);
    EXPECT_EQ(found(), (Names{"queue_missing", "queue_missing"}));
    EXPECT_EQ(text_of("queue_missing"), "the AT request queue (899) does not exist");
    EXPECT_EQ(msgget(899, 0), -1);
}

TEST_F(Doctor, FindsAQueueThatOtherUsersMayNotUse)
{
    msqid_ds state{};
    msgctl(queue(900), IPC_STAT, &state);
    state.msg_perm.mode = 0600;
    ASSERT_EQ(msgctl(queue(900), IPC_SET, &state), 0);
    EXPECT_EQ(found(), Names{"queue_permissions"});
    EXPECT_EQ(text_of("queue_permissions"),
              "the AT reply queue (900) may not be used by every user (mode 0600)");
    EXPECT_NE(hint_for("queue_permissions").find("'ipcrm -Q 900'"), std::string::npos);
}

TEST_F(Doctor, FindsAQueueThatThisUserMayNotUse)
{
    msqid_ds state{};
    msgctl(queue(900), IPC_STAT, &state);
    state.msg_perm.mode = 0600;
    ASSERT_EQ(msgctl(queue(900), IPC_SET, &state), 0);
    constexpr uid_t nobody = 65534;
    if (seteuid(nobody) != 0)
        GTEST_SKIP() << "no other user in this sandbox";
    EXPECT_EQ(text_of("queue_permissions"),
              "the AT reply queue (900) may not be used by this user");
    EXPECT_FALSE(finds("daemon_silent"));
    EXPECT_EQ(seteuid(0), 0);
}

TEST_F(Doctor, FindsAndTakesStaleRepliesOfAnySize)
{
    put(900, 12);
    put(900, 12, 1000);
    put(900, 4);
    put(1159, 6, 5);
    EXPECT_EQ(found(), (Names{"replies_stale", "replies_stale"}));
    EXPECT_EQ(text_of("replies_stale"), "the AT reply queue (900) holds 3 stale replies, of codes "
                                        "4, 12, which no caller takes");
    EXPECT_EQ(fixed(), (Names{"replies_stale", "replies_stale"}));
    EXPECT_EQ(found(), Names{});
}

TEST_F(Doctor, TakesNothingUnlessAsked)
{
    put(900, 12);
    put(900, CMIF_AT_GET_SEARCH_STATE); // which the doctor asks for itself
    put(1159, CMIF_QMI_GET_SIM_STATUS);
    Context context;
    doctor(context);
    EXPECT_EQ(found(), (Names{"replies_stale", "replies_stale"}));
    EXPECT_NE(text_of("replies_stale").find("2 stale replies"), std::string::npos);
}

TEST_F(Doctor, TakesNoReplyOfACodeThatIsInUse)
{
    put(900, 12);
    const client::CodeLock lock({{Channel::at, 12}}, 1, [] {});
    EXPECT_EQ(fixed(), Names{});
    EXPECT_TRUE(finds("replies_stale"));
}

TEST_F(Doctor, FindsAndTakesForeignReplies)
{
    put(900, 4711);
    EXPECT_EQ(found(), Names{"replies_foreign"});
    EXPECT_EQ(fixed(), Names{"replies_foreign"});
    EXPECT_EQ(found(), Names{});
}

// Numbers between those that the interface has.
TEST_F(Doctor, TakesUnusedCodesForForeign)
{
    put(900, 5);
    put(1159, 2, CMIF_QMI_PAYLOAD);
    put(1159, 7, CMIF_QMI_PAYLOAD);
    EXPECT_EQ(found(), (Names{"replies_foreign", "replies_foreign"}));
    put(900, 27);
    put(1159, 9, CMIF_QMI_PAYLOAD);
    EXPECT_EQ(found(),
              (Names{"replies_foreign", "replies_foreign", "replies_stale", "replies_stale"}));
    fixed();
    EXPECT_EQ(found(), Names{});
}

// The doctor sends nothing then: its own request would stay unanswered.
TEST_F(Doctor, FindsAReplyQueueThatForeignRepliesFill)
{
    fill(900, 4711);
    const Names names = found();
    EXPECT_EQ(names, (Names{"queue_full", "replies_foreign"}));
    for (const int code : {CMIF_AT_GET_SEARCH_STATE, CMIF_AT_GET_PACKET_DOMAIN})
        EXPECT_EQ(client::Unanswered().count({Channel::at, code}), 0);
    EXPECT_EQ(text_of("queue_full"), "the AT reply queue (900) is full of replies that no caller "
                                     "takes: the AT daemon can't answer");
    fixed();
    EXPECT_EQ(found(), Names{});
}

TEST_F(Doctor, FindsWhatWaitsForADaemonThatEnded)
{
    ASSERT_EQ(found(), Names{}); // the daemons have taken requests
    at_.reset();
    put(899, 12);
    put(899, 77);
    put(899, 4, 1000);
    EXPECT_EQ(found(), (Names{"daemon_ended", "requests_waiting", "requests_foreign"}));
    EXPECT_EQ(text_of("requests_waiting"),
              "the AT request queue (899) holds 3 requests, of codes 4, 12, 77");
    EXPECT_EQ(text_of("requests_foreign"), "the AT request queue (899) holds 2 records, of codes "
                                           "4, 77, which the AT daemon does not understand");
}

TEST_F(Doctor, FindsAFullRequestQueue)
{
    at_.reset();
    fill(899, 12);
    EXPECT_TRUE(finds("queue_full"));
    EXPECT_EQ(text_of("queue_full"), "the AT request queue (899) is full: no request fits");
}

TEST_F(Doctor, FindsAndForgetsRequestsThatNoCallerWaitsFor)
{
    client::Unanswered().add({Channel::at, 24});
    EXPECT_EQ(found(), Names{"requests_unanswered"});
    EXPECT_EQ(fixed(), Names{"requests_unanswered"});
    EXPECT_EQ(client::Unanswered().count({Channel::at, 24}), 0);
}

// Calls of this code do not wait for such a reply.
TEST_F(Doctor, FindsNoRequestThatADaemonThatEndedHasLeft)
{
    ASSERT_EQ(found(), Names{}); // the daemon has taken requests
    client::Unanswered().add({Channel::at, 24});
    EXPECT_EQ(found(), Names{"requests_unanswered"});
    at_.reset();
    EXPECT_EQ(found(), Names{"daemon_ended"});
}

TEST_F(Doctor, LeavesARequestAloneWhoseCallerWaits)
{
    const client::CodeLock lock({{Channel::at, 24}}, 1, [] {});
    client::Unanswered().add({Channel::at, 24});
    EXPECT_EQ(found(), Names{});
}

TEST_F(Doctor, FindsAFrozenCaller)
{
    const Child caller([] {
        const client::CodeLock lock({{Channel::at, 12}}, 1, [] {});
        pause();
    });
    while (!client::lock_process({Channel::at, 12}))
        usleep(1000);
    caller.signal(SIGSTOP);
    EXPECT_TRUE(caller.still_runs());
    EXPECT_EQ(found(), Names{"caller_frozen"});
    const std::string process = std::to_string(caller.process());
    EXPECT_NE(text_of("caller_frozen").find("process " + process), std::string::npos);
    EXPECT_EQ(hint_for("caller_frozen"),
              "Continue it with 'kill -CONT " + process + "', or end it.");
}

// Both codes that the doctor asks for itself are kept from it: it does not blame the daemon.
TEST_F(Doctor, DoesNotCallADaemonSilentThatItCouldNotAsk)
{
    const client::CodeLock lock({{Channel::at, CMIF_AT_GET_SEARCH_STATE}}, 1, [] {});
    EXPECT_EQ(found(), Names{});
    client::Unanswered().add({Channel::at, CMIF_AT_GET_PACKET_DOMAIN});
    EXPECT_EQ(found(), Names{"requests_unanswered"});
}

TEST_F(Doctor, FindsLocksThatCantBeUsed)
{
    ASSERT_EQ(found(), Names{}); // the semaphores exist
    semctl(semget(0x434d4946, 0, 0), 0, IPC_RMID);
    ASSERT_NE(semget(0x434d4946, 1, IPC_CREAT | 0666), -1); // another program's, of another size
    EXPECT_TRUE(finds("locks_unusable"));
}

} // namespace
