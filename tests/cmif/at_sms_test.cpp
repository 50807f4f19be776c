// Short messages: the two requests, and the records that the list of messages fills.
#include "cmif/cmif.h"
#include "tests/support/at_checks.h"
#include "tests/support/mailbox.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <climits>
#include <cstddef>

static_assert(sizeof(cmif_sms_info) == 1100);
static_assert(offsetof(cmif_sms_info, id) == 0 && offsetof(cmif_sms_info, stat) == 4);
static_assert(offsetof(cmif_sms_info, da) == 5 && offsetof(cmif_sms_info, scts) == 25);
static_assert(offsetof(cmif_sms_info, text) == 75);

namespace
{
AtRequest delete_message(int index, int index2)
{
    const std::string first = std::to_string(index);
    const std::string second = std::to_string(index2);
    return {.name = "shared_CMIF_set_DeletemobileSMS",
            .call = [=] { return shared_CMIF_set_DeletemobileSMS(index, index2); },
            .code = 19,
            .fields = {.set_string = first, .set_string2 = second},
            .after_code = {"set_string=" + first, "set_string2=" + second}};
}

int no_count;
int no_unreads;

const AtRequest requests[] = {
    delete_message(4, 0),
    {.name = "shared_CMIF_get_mobileSMSInfo",
     .call = [] { return shared_CMIF_get_mobileSMSInfo(nullptr, &no_count, &no_unreads); },
     .code = 18,
     .follow_up = {"get lte_mobile_sms_counts", "get lte_mobile_sms_unreads"}},
};

class SmsRequests : public testing::TestWithParam<AtCheck>
{
};
} // namespace

TEST_P(SmsRequests, Pass)
{
    for (const AtRequest &request : requests)
        GetParam().check(request);
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, SmsRequests, testing::ValuesIn(at_checks), check_name);

TEST(DeleteMessage, SendsAnyTwoNumbers)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    const std::pair<int, int> numbers[] = {
        {4, 0}, {0, 4}, {-1, 255}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MAX}};
    for (const auto &[index, index2] : numbers) {
        const AtRequest request = delete_message(index, index2);
        queues.reply(19, at_reply(0));
        EXPECT_EQ(record(request.call).output, output_of(steps_of(request, queues.requests())));
        EXPECT_EQ(queues.take_request().value_or(Message{}).payload, at_payload(request.fields));
    }
}

TEST(Messages, RefuseNullBeforeTheyTouchAnything)
{
    store::set("debug_at_cmif", "1");
    Mailbox box;
    const std::pair<int *, int *> numbers[] = {
        {nullptr, &box.unreads}, {&box.count, nullptr}, {nullptr, nullptr}};
    for (const auto &[count, unreads] : numbers) {
        const Recorded run = record([&, count = count, unreads = unreads] {
            return shared_CMIF_get_mobileSMSInfo(box.messages.data(), count, unreads);
        });
        EXPECT_EQ(run.result, 5);
        EXPECT_EQ(run.steps, Lines{});
    }
    EXPECT_FALSE(queue_exists(899));
    EXPECT_FALSE(queue_exists(900));
    EXPECT_EQ(box.count, 4711);
    EXPECT_EQ(box.unreads, 4711);
}

TEST(Messages, AreUntouchedWhenTheChannelFails)
{
    store::set("lte_mobile_sms_counts", "1");
    Mailbox box;
    const auto read = [&] {
        return shared_CMIF_get_mobileSMSInfo(box.messages.data(), &box.count, &box.unreads);
    };
    AtRequest request = requests[1];
    request.call = read;
    expect_silent_failures(request);
    EXPECT_EQ(box.count, 4711);
    EXPECT_EQ(box.unreads, 4711);
    EXPECT_TRUE(box.is_untouched(0));
    EXPECT_EQ(store::reads("lte_mobile_sms_counts"), 0);
}

// What the daemon publishes while the call waits; what it answers doesn't matter.
TEST(Messages, AreReadWhateverTheDaemonAnswers)
{
    for (const int ret_code : {0, 77, 2, 3, -1}) {
        SCOPED_TRACE(ret_code);
        store::set("lte_mobile_sms_counts", "0");
        store::set("lte_mobile_sms_stat_1", "stale");
        Mailbox box;
        const QueuePair queues = QueuePair::at();
        const ScriptedDaemon daemon(queues, [&](const Message &message) {
            store::set("lte_mobile_sms_counts", "2");
            store::set("lte_mobile_sms_unreads", "1");
            store::set("lte_mobile_sms_id_1", "3");
            store::set("lte_mobile_sms_stat_1", "REC UNREAD");
            store::set("lte_mobile_sms_da_1", "+4915112345678");
            store::set("lte_mobile_sms_scts_1", "24/05/01,12:00:00+08");
            store::set("lte_mobile_sms_text_1", "Hello");
            store::set("lte_mobile_sms_id_2", "5");
            store::set("lte_mobile_sms_stat_2", "REC READ");
            queues.reply(message.type, at_reply(ret_code));
        });
        const Recorded run = record([&] {
            return shared_CMIF_get_mobileSMSInfo(box.messages.data(), &box.count, &box.unreads);
        });
        EXPECT_EQ(run.result, ret_code);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(box.count, 2);
        EXPECT_EQ(box.unreads, 1);
        EXPECT_EQ(box.messages[0].id, 3);
        EXPECT_EQ(box.messages[0].stat, 0);
        EXPECT_STREQ(box.messages[0].da, "+4915112345678");
        EXPECT_STREQ(box.messages[0].scts, "24/05/01,12:00:00+08");
        EXPECT_STREQ(box.messages[0].text, "Hello");
        EXPECT_EQ(box.messages[1].id, 5);
        EXPECT_EQ(box.messages[1].stat, 1);
        EXPECT_STREQ(box.messages[1].da, "");
        EXPECT_STREQ(box.messages[1].scts, "");
        EXPECT_STREQ(box.messages[1].text, "");
        EXPECT_TRUE(box.is_untouched(2));
    }
}

TEST(Messages, AreReadInOrder)
{
    store::set("lte_mobile_sms_counts", "2");
    Mailbox box;
    const Recorded run = read_messages(box);
    Lines reads;
    for (const std::string &step : run.steps)
        if (step.starts_with("get lte_"))
            reads.push_back(step);
    EXPECT_EQ(reads, (Lines{"get lte_mobile_sms_counts", "get lte_mobile_sms_unreads",
                            "get lte_mobile_sms_id_1", "get lte_mobile_sms_stat_1",
                            "get lte_mobile_sms_da_1", "get lte_mobile_sms_scts_1",
                            "get lte_mobile_sms_text_1", "get lte_mobile_sms_id_2",
                            "get lte_mobile_sms_stat_2", "get lte_mobile_sms_da_2",
                            "get lte_mobile_sms_scts_2", "get lte_mobile_sms_text_2"}));
}

// As many as the daemon counts, with nothing written after the last.
TEST(Messages, HaveNoUpperBound)
{
    constexpr int many = 1200;
    store::set("lte_mobile_sms_counts", std::to_string(many));
    for (int number = 1; number <= many; ++number)
        store::set(message_key("id", number), std::to_string(10 * number));
    Mailbox box(many + 1);
    read_messages(box);
    EXPECT_EQ(box.count, many);
    for (int i = 0; i < many; ++i)
        ASSERT_EQ(box.messages[static_cast<size_t>(i)].id, 10 * (i + 1));
    EXPECT_TRUE(box.is_untouched(many));
}

TEST(Messages, AreCountedByTheStoredText)
{
    const std::pair<const char *, int> counts[] = {
        {"", 0},    {"none", 0}, {"-3", -3}, {"0", 0},
        {" 2x", 2}, {"+1", 1},   {"%d", 0},  {"-2147483648", INT_MIN}};
    for (const auto &[stored, count] : counts) {
        SCOPED_TRACE(stored);
        store::set("lte_mobile_sms_counts", stored);
        store::set("lte_mobile_sms_unreads", stored);
        Mailbox box;
        EXPECT_EQ(read_messages(box).result, 0);
        EXPECT_EQ(box.count, count);
        EXPECT_EQ(box.unreads, count);
        const size_t written = count > 0 ? static_cast<size_t>(count) : 0;
        for (size_t i = 0; i < box.messages.size(); ++i)
            EXPECT_EQ(box.is_untouched(i), i >= written) << i;
    }
}

TEST(Messages, AreUnreadOnlyByOneText)
{
    store::set("lte_mobile_sms_counts", "1");
    const std::pair<const char *, int> states[] = {
        {"REC UNREAD", 0},    {"rec unread", 1},  {"REC READ", 1},    {"", 1},
        {"REC UNREA", 1},     {"REC UNREADY", 1}, {" REC UNREAD", 1}, {"STO SENT", 1},
        {"\"REC UNREAD\"", 1}};
    for (const auto &[stored, stat] : states) {
        SCOPED_TRACE(stored);
        store::set("lte_mobile_sms_stat_1", stored);
        Mailbox box;
        read_messages(box);
        EXPECT_EQ(box.messages[0].stat, stat);
    }
}

// A number that the store doesn't hold reads as 0.
TEST(Messages, HaveTheStoredNumber)
{
    store::set("lte_mobile_sms_counts", "1");
    const std::pair<const char *, int> ids[] = {{"3", 3},   {"", 0},      {"x", 0},
                                                {"-7", -7}, {" 12 ", 12}, {"2147483647", INT_MAX}};
    for (const auto &[stored, id] : ids) {
        store::set("lte_mobile_sms_id_1", stored);
        Mailbox box;
        read_messages(box);
        EXPECT_EQ(box.messages[0].id, id);
    }
}

// The count is read through the pointer on every turn, wherever it points.
TEST(MessageCount, MayBeAFieldOfARecord)
{
    store::set("lte_mobile_sms_counts", "4");
    store::set("lte_mobile_sms_id_1", "2");
    Mailbox box;
    read_messages(box.messages.data(), &box.messages[0].id, &box.unreads);
    EXPECT_EQ(box.messages[0].id, 2);
    EXPECT_FALSE(box.is_untouched(1));
    EXPECT_TRUE(box.is_untouched(2));

    box.fill();
    store::set("lte_mobile_sms_counts", "1");
    store::set("lte_mobile_sms_id_1", "3");
    read_messages(box.messages.data(), &box.messages[0].id, &box.unreads);
    EXPECT_FALSE(box.is_untouched(2));
    EXPECT_TRUE(box.is_untouched(3));

    box.fill();
    store::set("lte_mobile_sms_id_1", "none");
    read_messages(box.messages.data(), &box.messages[0].id, &box.unreads);
    EXPECT_TRUE(box.is_untouched(1));
}

// The unread count is stored last, so that it wins.
TEST(MessageCount, MayBeTheUnreadCount)
{
    store::set("lte_mobile_sms_counts", "3");
    store::set("lte_mobile_sms_unreads", "1");
    Mailbox box;
    read_messages(box.messages.data(), &box.count, &box.count);
    EXPECT_EQ(box.count, 1);
    EXPECT_FALSE(box.is_untouched(0));
    EXPECT_TRUE(box.is_untouched(1));
}

// Without an array the counts arrive all the same.
TEST(MessageCount, NeedsNoArray)
{
    store::set("lte_mobile_sms_counts", "3");
    store::set("lte_mobile_sms_unreads", "2");
    int count = 0;
    int unreads = 0;
    EXPECT_EQ(read_messages(nullptr, &count, &unreads, 7).result, 7);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(unreads, 2);
}
