// shared_CMIF_get_mobileSMSInfo: the input is the store's values, divided by NULs: the count, the
// unread count, then five for each message. The reply is there beforehand.
#include "tests/cmif/reference/message_copy.h"

#include "fuzz_store.h"
#include "tests/support/bytes.h"

#include <array>
#include <cstring>
#include <sys/msg.h>
#include <vector>

namespace
{
constexpr int request_code = 18;
constexpr size_t payload = 116;
constexpr int max_messages = 3;

int queue(key_t key)
{
    const int found = msgget(key, IPC_CREAT | 0666);
    check(found != -1, "no queue");
    return found;
}

void put_reply()
{
    static const int replies = queue(900);
    const cmif_msg reply{request_code, "", "", "", "", 0};
    check(msgsnd(replies, &reply, payload, IPC_NOWAIT) == 0, "no reply");
}

void take_request()
{
    static const int requests = queue(899);
    cmif_msg request;
    const ssize_t size = msgrcv(requests, &request, payload, request_code, IPC_NOWAIT);
    check(size == static_cast<ssize_t>(payload), "no request");
}

std::vector<std::string> parts_of(const unsigned char *data, size_t size)
{
    std::vector<std::string> parts{""};
    for (size_t i = 0; i < size; ++i)
        if (data[i] == '\0')
            parts.emplace_back();
        else
            parts.back() += static_cast<char>(data[i]);
    parts.resize(2 + 5 * max_messages);
    return parts;
}

std::string key(const char *field, int number)
{
    return std::string("lte_mobile_sms_") + field + "_" + std::to_string(number);
}

void store_message(int number, const reference::StoredMessage &message)
{
    stored[key("id", number)] = message.id;
    stored[key("stat", number)] = message.stat;
    stored[key("da", number)] = message.da;
    stored[key("scts", number)] = message.scts;
    stored[key("text", number)] = message.text;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    const std::vector<std::string> parts = parts_of(data, size);
    const int expected_count = atoi(parts[0].c_str());
    if (expected_count > max_messages)
        return -1;
    stored["lte_mobile_sms_counts"] = parts[0];
    stored["lte_mobile_sms_unreads"] = parts[1];
    std::array<cmif_sms_info, max_messages> found;
    std::array<cmif_sms_info, max_messages> expected;
    memset(&found, '?', sizeof found);
    memset(&expected, '?', sizeof expected);
    for (int i = 0; i < max_messages; ++i) {
        const std::string *part = &parts[2 + 5 * static_cast<size_t>(i)];
        const reference::StoredMessage message{part[0], part[1], part[2], part[3], part[4]};
        store_message(i + 1, message);
        if (i < expected_count)
            reference::fill_message(expected[static_cast<size_t>(i)], message);
    }

    put_reply();
    int count = 0;
    int unreads = 0;
    check(shared_CMIF_get_mobileSMSInfo(found.data(), &count, &unreads) == 0, "the result");
    take_request();

    check(count == expected_count, "the count");
    check(unreads == atoi(parts[1].c_str()), "the unread count");
    check(bytes_of(found) == bytes_of(expected), "the records");
    return 0;
}
