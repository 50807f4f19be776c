// Many callers beside a daemon that does nothing: what they give up leaves the queue, all of it,
// and what others sent stays in its order.
#include "client/call.h"
#include "client/queues.h"
#include "client/request.h"
#include "tests/support/child.h"
#include "tests/support/client_calls.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <sys/msg.h>
#include <unistd.h>
#include <vector>

namespace
{

using namespace client;

constexpr int callers = 6;
constexpr int calls_each = 40;
constexpr int own_codes = 10; // of the callers: 1 to 10; the others' are above

int request_queue()
{
    return msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
}

void send(long code, char letter)
{
    cmif_msg record{};
    record.mod_id = code;
    record.set_string[0] = letter;
    ASSERT_EQ(msgsnd(request_queue(), &record, CMIF_AT_PAYLOAD, 0), 0);
}

Call unanswered_call(int code)
{
    return {.request = at_request("call", static_cast<cmif_at_code>(code)), .body = [code](Json &) {
                send(code, '?');
                pause();
                return 0;
            }};
}

// How many of its requests were sent and withdrawn. What was not sent had nothing to withdraw.
int make_calls(int caller)
{
    int withdrawn = 0;
    for (int i = 0; i < calls_each; ++i) {
        const int code = 1 + (caller * 7 + i) % own_codes;
        const Failure failure = failure_of(unanswered_call(code), {.timeout = 0.05});
        EXPECT_EQ(failure.status(), Exit::no_answer) << failure.what();
        if (failure.details().value("sent", false)) {
            EXPECT_EQ(failure.details()["withdrawn"], true) << failure.what();
            ++withdrawn;
        }
    }
    return withdrawn;
}

std::string letters_left()
{
    std::string letters;
    peek(request_queue(),
         [&](long, std::string_view payload) { letters.insert(0, 1, payload.front()); });
    return letters;
}

// The records behind one that is taken move up, past a look that went the other way.
TEST(Peek, MissesNoRecordThatStaysWhileAnotherIsTaken)
{
    for (const char letter : {'a', 'b', 'c', 'd'})
        send(1, letter);
    std::string seen;
    peek(request_queue(), [&](long, std::string_view payload) {
        cmif_msg taken{};
        if (seen.empty())
            ASSERT_NE(msgrcv(request_queue(), &taken, CMIF_AT_PAYLOAD, 0, 0), -1);
        seen += payload.front();
    });
    for (const char letter : letters_left())
        EXPECT_NE(seen.find(letter), std::string::npos) << letter;
    EXPECT_EQ(letters_left(), "bcd");
}

TEST(ParallelWithdrawals, LeaveNothingAndKeepTheOrderOfOthers)
{
    std::vector<std::unique_ptr<Child>> all;
    for (int caller = 0; caller < callers; ++caller)
        all.push_back(std::make_unique<Child>([caller] {
            const int withdrawn = make_calls(caller);
            std::exit(testing::Test::HasFailure() ? 255 : withdrawn);
        }));
    std::string expected;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        send(own_codes + 1 + letter % 7, letter);
        expected += letter;
        usleep(20'000);
    }
    int withdrawn = 0;
    for (const auto &child : all) {
        const int count = child->wait();
        ASSERT_LT(count, 255);
        withdrawn += count;
    }
    EXPECT_GT(withdrawn, callers * calls_each / 4);
    EXPECT_EQ(letters_left(), expected);
    const Unanswered replies;
    for (int code = 1; code <= own_codes; ++code)
        EXPECT_EQ(replies.count({Channel::at, code}), 0) << code;
}

} // namespace
