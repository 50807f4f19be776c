// soak-hostile requests COUNT: beside a router, so many hostile records for each of its daemons.
// soak-hostile replies COUNT: so many hostile replies to callers of the library on each channel.
//
// Built with sanitizers, a daemon or caller that reads or writes where it should not ends at once.
// Sizes, types and bytes are random; half of the records have the right size and a code that
// exists, so that they are not refused at the door.
#include "cmif/cmif.h"
#include "soak.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <unistd.h>

namespace
{

using namespace soak;

struct Record {
    long type = 1;
    std::array<char, 8000> payload{};
};

struct Channel {
    const char *name;
    key_t requests, replies;
    std::size_t size; // of a payload
    long codes;
    std::size_t longest_reply; // that a caller receives
};

constexpr std::array<Channel, 2> channels{{
    {"AT", CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY, CMIF_AT_PAYLOAD, 27, CMIF_AT_PAYLOAD},
    {"QMI", CMIF_QMI_REQUEST_KEY, CMIF_QMI_REPLY_KEY, CMIF_QMI_PAYLOAD, 9, CMIF_QMI_PAYLOAD + 4},
}};

int queue(key_t key)
{
    return msgget(key, IPC_CREAT | 0666);
}

class Hostility
{
public:
    explicit Hostility(unsigned seed) : random_(seed) {}

    std::size_t up_to(std::size_t largest)
    {
        return std::uniform_int_distribution<std::size_t>(0, largest)(random_);
    }
    // Noise, a field without an end, digits and separators, or conversions of printf.
    void fill(Record &record)
    {
        constexpr const char *alphabets[] = {"A", "0123456789,.\"\n", "%sn$*d", "\xff\x80-\x01"};
        const std::size_t kind = up_to(std::size(alphabets));
        for (char &byte : record.payload)
            byte = kind == std::size(alphabets)
                       ? static_cast<char>(random_())
                       : alphabets[kind][up_to(std::strlen(alphabets[kind]))]; // or its NUL
    }
    std::size_t request(const Channel &channel, Record &record)
    {
        fill(record);
        record.type = 1 + static_cast<long>(up_to(static_cast<std::size_t>(channel.codes) - 1));
        if (up_to(1) == 0)
            return channel.size;
        if (up_to(1) == 0)
            record.type = 1 + static_cast<long>(random_() >> 1U);
        return up_to(up_to(9) == 0 ? record.payload.size() : 2 * channel.size);
    }

private:
    std::mt19937 random_;
};

// The daemons drop a reply after a second without room.
[[noreturn]] void take_replies(const Channel &channel)
{
    Record record;
    for (;;)
        if (msgrcv(queue(channel.replies), &record, record.payload.size(), 0, MSG_NOERROR) == -1)
            _Exit(1);
}

int send_requests(const Channel &channel, int count)
{
    Hostility hostility(1);
    Record record;
    int sent = 0;
    for (int i = 0; i < count; ++i) {
        const std::size_t size = hostility.request(channel, record);
        sent += msgsnd(queue(channel.requests), &record, size, 0) == 0 ? 1 : 0;
    }
    msqid_ds state{};
    for (int tries = 0; tries < 60'000 && msgctl(queue(channel.requests), IPC_STAT, &state) == 0 &&
                        state.msg_qnum != 0;
         ++tries)
        pause_ms(1);
    at_least(count, (std::string("records sent to the ") + channel.name + " daemon").c_str(), sent);
    at_most(0, "of them still queued", static_cast<int>(state.msg_qnum));
    return sent;
}

// By a code of each channel that changes nothing.
void check_that_both_answer()
{
    int counters[4], status = 0;
    alarm(60);
    at_most(0, "result of the AT daemon's next answer", shared_CMIF_get_mobilePINPUKC(counters));
    at_most(0, "result of the QMI daemon's next answer", shared_CMIF_get_sim_status(&status));
}

void test_daemons(int count)
{
    for (const Channel &channel : channels) {
        const pid_t taker = start([&channel] { take_replies(channel); });
        send_requests(channel, count);
        end(taker);
    }
    Record record;
    for (const Channel &channel : channels)
        while (msgrcv(queue(channel.replies), &record, record.payload.size(), 0,
                      MSG_NOERROR | IPC_NOWAIT) != -1) {}
    check_that_both_answer();
}

// A reply that is too long stays in the queue: it is taken away, and for an AT caller, which waits
// on, another one follows.
[[noreturn]] void answer_all(const Channel &channel)
{
    Hostility hostility(2);
    Record record, dropped;
    const int replies = queue(channel.replies);
    while (msgrcv(queue(channel.requests), &record, channel.size, 0, MSG_NOERROR) != -1) {
        while (msgrcv(replies, &dropped, dropped.payload.size(), 0, MSG_NOERROR | IPC_NOWAIT) != -1)
            ;
        const long code = record.type;
        hostility.fill(record);
        record.type = code;
        const bool too_long = hostility.up_to(50) == 0;
        msgsnd(replies, &record,
               too_long ? channel.longest_reply + 1 + hostility.up_to(4000)
                        : hostility.up_to(channel.longest_reply),
               0);
        if (too_long && channel.requests == CMIF_AT_REQUEST_KEY) {
            pause_ms(1);
            msgrcv(replies, &dropped, dropped.payload.size(), code, MSG_NOERROR | IPC_NOWAIT);
            msgsnd(replies, &record, channel.longest_reply, 0);
        }
    }
    _Exit(1);
}

// Buffers of the size that the interface asks for, on the heap: the sanitizer guards their ends.
void call_once(const Channel &channel, Hostility &hostility)
{
    if (channel.requests == CMIF_AT_REQUEST_KEY) {
        const std::unique_ptr<int[]> counters(new int[4]);
        if (hostility.up_to(1) == 0)
            shared_CMIF_get_mobilePINPUKC(counters.get());
        else
            shared_CMIF_set_EntermobilePIN("1234");
        return;
    }
    const std::unique_ptr<char[]> revision(new char[100]), service(new char[50]);
    const auto status = std::make_unique<int>();
    switch (hostility.up_to(2)) {
    case 0:
        shared_CMIF_get_device_rev_id(revision.get());
        break;
    case 1:
        shared_CMIF_get_ps_service(service.get());
        break;
    default:
        shared_CMIF_get_sim_status(status.get());
    }
}

void test_callers(int count)
{
    int &returned = shared<int>();
    if (std::FILE *ready = std::fopen(CMIF_QMI_READY_FILE, "w"))
        std::fclose(ready);
    for (const Channel &channel : channels) {
        const pid_t daemon = start([&channel] { answer_all(channel); });
        returned = 0;
        wait_for(start([&] {
            std::freopen("/dev/null", "w", stdout);
            std::freopen("/dev/null", "w", stderr); // perror, after each reply that is too long
            Hostility hostility(3);
            for (; returned < count; ++returned)
                call_once(channel, hostility);
        }));
        end(daemon);
        at_least(count, (std::string(channel.name) + " calls that returned").c_str(), returned);
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const std::string part = argv[1];
    if (part != "requests" && part != "replies")
        return 2;
    (part == "requests" ? test_daemons : test_callers)(std::atoi(argv[2]));
    return status();
}
