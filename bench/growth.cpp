#include "cmif/cmif.h"
#include "daemon.h"
#include "getters.h"
#include "measure.h"
#include "parts.h"
#include "stores.h"

#include <string>
#include <sys/msg.h>
#include <vector>

namespace bench
{
namespace
{

Block reading_from(Store store, void (*work)(), int times)
{
    return [store, block = block_of(work, times)](int calls) {
        use(store);
        return block(calls);
    };
}

// Replies of a code that no caller waits for, in front of the one that the caller waits for.
class ForeignReplies
{
public:
    ForeignReplies() : queue_(msgget(CMIF_AT_REPLY_KEY, queue_flags)) {}
    ~ForeignReplies() { msgctl(queue_, IPC_RMID, nullptr); }
    ForeignReplies(const ForeignReplies &) = delete;
    ForeignReplies &operator=(const ForeignReplies &) = delete;

    // As many as leave room for one reply.
    int room() const
    {
        msqid_ds queue{};
        msgctl(queue_, IPC_STAT, &queue);
        return static_cast<int>(queue.msg_qbytes / CMIF_AT_PAYLOAD) - 1;
    }
    void add_up_to(int count)
    {
        cmif_msg record{};
        record.mod_id = CMIF_AT_DOWNLOAD_MODE;
        for (; count_ < count; ++count_)
            msgsnd(queue_, &record, CMIF_AT_PAYLOAD, 0);
    }

private:
    int queue_, count_ = 0;
};

void foreign_replies()
{
    ForeignReplies replies;
    const Daemon daemon(serve_at_requests);
    for (const int count : {0, 1, 2, 4, 8, 16, 32, 64, 128, replies.room()}) {
        replies.add_up_to(count);
        const auto measured = in_turns({block_of([] { at_request_by_hand(CMIF_AT_SET_TIME_ZONE); }),
                                        block_of([] { shared_CMIF_set_timezone(); })},
                                       {pace.rounds / 4 + 1, pace.block});
        figure({"foreign replies", "AT request", "by hand", std::to_string(count)}, "ns",
               spread(measured[0]));
        figure({"foreign replies", "AT request", "library", std::to_string(count)}, "ns",
               spread(measured[1]));
    }
}

struct Subject {
    const char *table, *row;
    void (*work)();
    int times = 1;        // each call of the work does it so often
    const char *bar = ""; // of the ratio of the host's store to the one in memory
};

void on_both_stores(const Subject &subject, int size)
{
    const auto place = [&](const char *column) {
        return Place{subject.table, subject.row, column, std::to_string(size)};
    };
    const auto measured = in_turns({reading_from(Store::memory, subject.work, subject.times),
                                    reading_from(Store::host, subject.work, subject.times)},
                                   {pace.rounds / 4 + 1, pace.block});
    figure(place(name_of(Store::memory)), "ns", spread(measured[0]));
    figure(place(name_of(Store::host)), "ns", spread(measured[1]));
    figure(place("ratio"), "", spread(ratios(measured[1], measured[0])), subject.bar);
    use(Store::memory);
}

void store_message(int number)
{
    const std::string end = '_' + std::to_string(number);
    set_in_both("lte_mobile_sms_id" + end, std::to_string(number));
    set_in_both("lte_mobile_sms_stat" + end, "REC READ");
    set_in_both("lte_mobile_sms_da" + end, "+12025550100");
    set_in_both("lte_mobile_sms_scts" + end, "26/01/01,12:00:00+00");
    set_in_both("lte_mobile_sms_text" + end,
                "A message of about the length that most messages have.");
}

void list_messages()
{
    static std::vector<cmif_sms_info> messages(1000);
    int count = 0, unread = 0;
    shared_CMIF_get_mobileSMSInfo(messages.data(), &count, &unread);
}

void messages()
{
    const Daemon daemon(serve_at_requests);
    empty_both();
    int stored = 0;
    for (const int count : {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000}) {
        while (stored < count)
            store_message(++stored);
        set_in_both("lte_mobile_sms_counts", std::to_string(count));
        on_both_stores({"messages", "list of messages", list_messages}, count);
    }
}

void keys()
{
    empty_both();
    set_getter_keys();
    int stored = getter_count;
    for (const int count : {10, 20, 50, 100, 200, 500, 1000, 2000, 5000, 10000}) {
        for (; stored < count; ++stored)
            set_in_both("lte_other_value_" + std::to_string(stored), "1");
        on_both_stores({"keys", "plain getter", get_all, getter_count, "<=4.00"}, count);
    }
}

} // namespace

void growth()
{
    callers();
    foreign_replies();
    keys();
    messages();
}

} // namespace bench
