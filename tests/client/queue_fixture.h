// The request queue of the AT daemon, and calls that send on it what the library would send.
#ifndef TESTS_CLIENT_QUEUE_FIXTURE_H
#define TESTS_CLIENT_QUEUE_FIXTURE_H

#include "client/call.h"
#include "client/request.h"
#include "cmif/cmif.h"
#include "tests/support/child.h"
#include "tests/support/client_calls.h"

#include <gtest/gtest.h>
#include <sys/msg.h>
#include <unistd.h>

using namespace client;

class Queue : public testing::Test
{
protected:
    void SetUp() override
    {
        queue_ = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
        ASSERT_NE(queue_, -1);
    }

    void send(const char *letter) const
    {
        const cmif_msg record = [letter] {
            cmif_msg filled{};
            filled.mod_id = CMIF_AT_ENTER_PIN;
            filled.set_string[0] = *letter;
            return filled;
        }();
        ASSERT_EQ(msgsnd(queue_, &record, CMIF_AT_PAYLOAD, 0), 0);
    }

    // As the library waits: forever, whatever happens.
    static int wait_for_reply()
    {
        const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
        cmif_msg record{};
        while (msgrcv(replies, &record, CMIF_AT_PAYLOAD, CMIF_AT_ENTER_PIN, 0) == -1)
            continue;
        return record.ret_code;
    }

    // Sends a reply, as the daemon does.
    static void reply(int ret_code)
    {
        cmif_msg record{};
        record.mod_id = CMIF_AT_ENTER_PIN;
        record.ret_code = ret_code;
        const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
        ASSERT_EQ(msgsnd(replies, &record, CMIF_AT_PAYLOAD, 0), 0);
    }

    void take_one() const
    {
        cmif_msg record{};
        ASSERT_NE(msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, 0), -1);
    }

    Call entering(const char *letter) const
    {
        return {.request = enter_pin, .body = [this, letter](Json &) {
                    send(letter);
                    return wait_for_reply();
                }};
    }

    // Empties the queue. The first letter of each message, in order.
    std::string letters() const
    {
        cmif_msg record{};
        std::string all;
        while (msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, IPC_NOWAIT) != -1)
            all += record.set_string[0];
        return all;
    }

    static constexpr Request enter_pin = at_request("call", CMIF_AT_ENTER_PIN);
    int queue_ = -1;
};

#endif
