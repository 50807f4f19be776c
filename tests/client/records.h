// The AT queues as a daemon and other programs use them: records put, looked at and taken.
#ifndef TESTS_CLIENT_RECORDS_H
#define TESTS_CLIENT_RECORDS_H

#include "client/queues.h"
#include "client/unanswered.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/msg.h>

using client::Channel;
using client::RequestCode;
using client::SentRecord;
using client::Unanswered;
using client::Withdrawal;

constexpr RequestCode enter_pin{Channel::at, 12};

struct Message {
    long type;
    char payload[1024];
};

inline int request_queue()
{
    return msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
}
inline int reply_queue()
{
    return msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
}

inline void put(int queue, long type, const char *text, std::size_t size = CMIF_AT_PAYLOAD)
{
    Message message{type, {}};
    std::strcpy(message.payload, text);
    ASSERT_EQ(msgsnd(queue, &message, size, IPC_NOWAIT), 0);
}

inline std::string letters(int queue)
{
    std::string all;
    EXPECT_TRUE(client::peek(
        queue, [&](long, std::string_view payload) { all.insert(0, 1, payload.front()); }));
    return all;
}

// Takes one request, as a daemon does.
inline void take_one()
{
    Message message{};
    EXPECT_NE(msgrcv(request_queue(), &message, sizeof message.payload, 0, 0), -1);
}

#endif
