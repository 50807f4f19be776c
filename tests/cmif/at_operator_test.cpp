// The requests around operator selection: what travels and what is printed.
#include "cmif/cmif.h"
#include "tests/support/at_checks.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"

namespace
{
AtRequest select_operator(const std::string &provider, const std::string &provider2)
{
    const AtFields fields{.set_string = provider, .set_string2 = provider2};
    const std::string payload = at_payload(fields);
    return {
        .name = "shared_CMIF_SetNetworkProvider",
        .call = [=] { return shared_CMIF_SetNetworkProvider(provider.c_str(), provider2.c_str()); },
        .code = 17,
        .fields = fields,
        .after_code = {"snd_op.set_string=" + text_at(payload, 0),
                       "snd_op.set_string2=" + text_at(payload, 30)}};
}

const AtRequest requests[] = {
    select_operator("26202", "7"),
    {.name = "shared_CMIF_get_ModeManualSearch",
     .call = shared_CMIF_get_ModeManualSearch,
     .code = 23,
     .words = &daemon_words},
    {.name = "shared_CMIF_set_ModeManualSearch",
     .call = shared_CMIF_set_ModeManualSearch,
     .code = 24,
     .words = &daemon_words},
};

// One traced call with a reply already there: its lines and its payload.
void expect_traced_exchange(const AtRequest &request)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    queues.reply(request.code, at_reply(0));
    const Recorded run = record(request.call);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, output_of(steps_of(request, queues.requests())));
    EXPECT_EQ(queues.take_request().value_or(Message{}).payload, at_payload(request.fields));
}

class OperatorRequests : public testing::TestWithParam<AtCheck>
{
};
} // namespace

TEST_P(OperatorRequests, Pass)
{
    for (const AtRequest &request : requests)
        GetParam().check(request);
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, OperatorRequests, testing::ValuesIn(at_checks), check_name);

TEST(NetworkProvider, RefusesNullBeforeItTouchesAnything)
{
    store::set("debug_at_cmif", "1");
    const std::pair<const char *, const char *> texts[] = {
        {nullptr, "7"}, {"26202", nullptr}, {nullptr, nullptr}};
    for (const auto &[first, second] : texts) {
        const Recorded run = record([first = first, second = second] {
            return shared_CMIF_SetNetworkProvider(first, second);
        });
        EXPECT_EQ(run.result, 5);
        EXPECT_EQ(run.steps, Lines{});
    }
    EXPECT_FALSE(queue_exists(899));
    EXPECT_FALSE(queue_exists(900));
}

// 29 characters fit; more overflow into the following fields, and never into ret_code.
TEST(NetworkProvider, OverflowsIntoTheNextFieldWithOverLongTexts)
{
    for (const size_t size : {28U, 29U, 30U, 31U, 60U, 111U, 112U, 113U, 4096U}) {
        SCOPED_TRACE(size);
        const std::string text(size, 'x');
        expect_traced_exchange(select_operator(text, "7"));
        expect_traced_exchange(select_operator("26202", text));
        expect_traced_exchange(select_operator(text, text));
        expect_traced_exchange(select_operator(text, ""));
    }
}

TEST(NetworkProvider, SendsTextsAsTheyAre)
{
    for (const char *text : {"", "%s%n%d%%", " 262 02 ", "\xFF\x01", "\"26202\",7"})
        expect_traced_exchange(select_operator(text, text));
}

// The first text as it travels, with the other one 30 bytes after it.
TEST(NetworkProvider, LaysItsTextsOutInTheRecord)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(17, at_reply(0));
    EXPECT_EQ(shared_CMIF_SetNetworkProvider("26202", "7"), 0);
    std::string wire = "26202";
    wire.resize(30);
    wire += '7';
    wire.resize(116);
    const Message sent = queues.take_request().value_or(Message{});
    EXPECT_EQ(sent.type, 17);
    EXPECT_EQ(sent.payload, wire);
}

// Also where a search needs minutes: other replies stay, and only its own is taken.
TEST(ManualSearch, LeavesRepliesOfOtherCodes)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(23, at_reply(1));
    queues.reply(24, at_reply(9));
    EXPECT_EQ(shared_CMIF_set_ModeManualSearch(), 9);
    EXPECT_EQ(shared_CMIF_get_ModeManualSearch(), 1);
    EXPECT_FALSE(queues.take_reply().has_value());
}
