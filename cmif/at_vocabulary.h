// The lines that AT requests print for the steps of their round trip, in three sets. Log parsers
// depend on the mix of wordings and of upper and lower case.
#ifndef CMIF_AT_VOCABULARY_H
#define CMIF_AT_VOCABULARY_H

#include "cmif.h"

#include <type_traits>

namespace cmif
{

// The format of a trace line that takes at most one value. The compiler checks that its conversion
// fits the value. An empty line is never printed and reads no switch.
template <typename Value>
class Line
{
public:
    consteval Line(const char *text = "")
    {
        if (!fits(text))
            conversion_does_not_fit_the_value();
        for (char *to = text_; *text;)
            *to++ = *text++;
    }

    bool empty() const { return *text_ == '\0'; }
    const char *text() const { return text_; }

private:
    static void conversion_does_not_fit_the_value(); // not constexpr: calling it is an error

    static consteval bool fits(const char *text)
    {
        const char *wanted = std::is_same_v<Value, int>    ? "d"
                             : std::is_same_v<Value, long> ? "ld"
                                                           : "s";
        int conversions = 0;
        while (*text) {
            if (*text++ != '%')
                continue;
            for (const char *letter = wanted; *letter; ++letter)
                if (*text++ != *letter)
                    return false;
            ++conversions;
        }
        return conversions <= 1;
    }

    char text_[36] = {}; // an array: a pointer would cost a relocation
};

struct AtVocabulary {
    Line<const char *> no_request_queue;
    Line<const char *> no_reply_queue;
    Line<int> request_queue;
    Line<int> reply_queue;
    Line<long> type;
    Line<const char *> not_sent;
    Line<const char *> sent;
    Line<const char *> not_received;
    Line<const char *> received;
    int no_reply_queue_result = CMIF_NO_REPLY_QUEUE;
};

inline constexpr AtVocabulary common_lines{
    .no_request_queue = "cmif_common:%s msgget failed\n",
    .no_reply_queue = "[%s] - msgget failed\n",
    .request_queue = "key msqid=%d\n",
    .reply_queue = {},
    .type = "type mod_id=%ld\n",
    .not_sent = "cmif_common:%s msgsnd failed\n",
    .sent = "cmif_common:%s msgsnd success\n",
    .not_received = "cmif: %s msgrcv failed\n",
    .received = "cmif: %s msgrcv success\n",
};

inline constexpr AtVocabulary daemon_lines{
    .no_request_queue = "msgget failed\n",
    .no_reply_queue = "[%s] - msgget failed\n",
    .request_queue = "KEY msqid=%d\n",
    .reply_queue = {},
    .type = "type mod_id=%ld\n",
    .not_sent = "3gcm_common:%s msgsnd failed\n",
    .sent = "SEND SUCCESS\n",
    .not_received = "cmif: %s receive failed\n",
    .received = "RECEIVE SUCCESS\n",
};

inline constexpr AtVocabulary bracketed_lines{
    .no_request_queue = "cmif_common:%s msgget failed\n",
    .no_reply_queue = "[%s] - msgget failed\n",
    .request_queue = "key msqid=(%d)\n",
    .reply_queue = "key msg_recv_id=(%d)\n",
    .type = "type mod_id=(%ld)\n",
    .not_sent = "cmif_common:[%s] msgsnd failed\n",
    .sent = "cmif_common:[%s] msgsnd success\n",
    .not_received = "cmif: %s msgrcv failed\n",
    .received = "cmif: %s msgrcv success\n",
    .no_reply_queue_result = CMIF_NO_QUEUE, // the other sets have CMIF_NO_REPLY_QUEUE
};

} // namespace cmif

#endif
