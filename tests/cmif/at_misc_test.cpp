// Band region, phone functionality, profile and device management: what travels, what is printed.
#include "cmif/cmif.h"
#include "tests/support/at_checks.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <cerrno>
#include <climits>

namespace
{
// Phone functionality has brackets in its lines, and 2 for either queue.
const AtWords bracketed_words{
    .request_queue_failed = "cmif_common:%s msgget failed",
    .reply_queue_failed = "[%s] - msgget failed",
    .queue = "key msqid=(%d)",
    .code = "type mod_id=(%ld)",
    .send_failed = "cmif_common:[%s] msgsnd failed",
    .sent = "cmif_common:[%s] msgsnd success",
    .receive_failed = "cmif: %s msgrcv failed",
    .received = "cmif: %s msgrcv success",
};

// Prints the reply queue too, hence needs to know it.
AtRequest phone_functionality(int mode, const QueuePair &queues)
{
    const std::string byte(1, static_cast<char>(mode));
    const std::string payload = at_payload({.set_string = byte});
    return {.name = "shared_CMIF_set_phone_functionality",
            .call = [=] { return shared_CMIF_set_phone_functionality(mode); },
            .code = 22,
            .fields = {.set_string = byte},
            .before_code = {"key msg_recv_id=(" + std::to_string(queues.replies()) + ")"},
            .after_code = {"set_string=[" + text_at(payload, 0) + "]"},
            .words = &bracketed_words,
            .no_reply_queue = 2};
}

AtRequest band_region(int region, const std::string &value)
{
    return {.name = "shared_CMIF_SetBandRegion",
            .call = [=] { return shared_CMIF_SetBandRegion(region); },
            .code = 2,
            .fields = {.set_value = value},
            .after_code = {"set_value=" + value}};
}

// Each text ends at its field; nothing of them is printed.
AtRequest profile(int id, const std::string &first, const std::string &second)
{
    return {.name = "shared_CMIF_set_Profile",
            .call = [=] { return shared_CMIF_set_Profile(id, first.c_str(), second.c_str()); },
            .code = 25,
            .fields = {.set_string = first.substr(0, 29),
                       .set_string2 = second.substr(0, 29),
                       .set_value = std::to_string(id)}};
}

std::vector<AtRequest> requests(const QueuePair &queues)
{
    return {
        phone_functionality(1, queues),
        band_region(1, "0"),
        profile(3, "a", "b"),
        {.name = "shared_CMIF_set_TriggerOTADMSession",
         .call = shared_CMIF_set_TriggerOTADMSession,
         .code = 26},
        {.name = "shared_CMIF_get_SyncProfile3", .call = shared_CMIF_get_SyncProfile3, .code = 27},
    };
}

// One traced call with a reply already there: its lines and its payload.
void expect_traced_exchange(const AtRequest &request, const QueuePair &queues)
{
    store::set("debug_at_cmif", "1");
    queues.reply(request.code, at_reply(0));
    const Recorded run = record(request.call);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, output_of(steps_of(request, queues.requests())));
    const Message sent = queues.take_request().value_or(Message{});
    EXPECT_EQ(sent.type, request.code);
    EXPECT_EQ(sent.payload, at_payload(request.fields));
}

class MiscRequests : public testing::TestWithParam<AtCheck>
{
};
} // namespace

// A check removes both queues when it ends, so that each row has its own.
TEST_P(MiscRequests, Pass)
{
    for (size_t row = 0; row < 5; ++row) {
        const QueuePair queues = QueuePair::at();
        GetParam().check(requests(queues).at(row));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, MiscRequests, testing::ValuesIn(at_checks), check_name);

TEST(BandRegion, TravelsAsItsSearchMode)
{
    const std::pair<int, const char *> values[] = {
        {1, "0"}, {2, "2"}, {3, "3"}, {4, ""}, {0, ""}, {-1, ""}, {INT_MAX, ""}, {INT_MIN, ""}};
    const QueuePair queues = QueuePair::at();
    for (const auto &[region, value] : values) {
        SCOPED_TRACE(region);
        expect_traced_exchange(band_region(region, value), queues);
    }
}

// One raw byte, then zeros to the end; a level of 0 leaves an empty text.
TEST(PhoneFunctionality, TravelsAsOneByte)
{
    const std::pair<int, char> bytes[] = {
        {1, '\1'},  {0, '\0'},  {4, '\4'},     {257, '\1'},       {-1, '\xFF'},   {256, '\0'},
        {'%', '%'}, {10, '\n'}, {128, '\x80'}, {INT_MAX, '\xFF'}, {INT_MIN, '\0'}};
    const QueuePair queues = QueuePair::at();
    for (const auto &[mode, byte] : bytes) {
        SCOPED_TRACE(mode);
        expect_traced_exchange(phone_functionality(mode, queues), queues);
        const std::string payload = calls::sent().back().payload;
        EXPECT_EQ(payload, byte + std::string(115, '\0'));
    }
}

TEST(MissingReplyQueue, GivesTwoOnlyForPhoneFunctionality)
{
    const QueuePair queues = QueuePair::at();
    for (const AtRequest &request : requests(queues)) {
        SCOPED_TRACE(request.name);
        calls::script("msgget", {calls::real, calls::fails(ENOSPC)});
        EXPECT_EQ(request.call(), request.code == 22 ? 2 : -1);
        EXPECT_FALSE(queues.take_request().has_value());
    }
}

TEST(Profile, SendsAnyNumber)
{
    const QueuePair queues = QueuePair::at();
    for (const int id : {0, 1, 3, 16, -1, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(id);
        expect_traced_exchange(profile(id, "IPV4V6", "internet.example"), queues);
    }
}

TEST(Profile, CutsEachTextAtItsField)
{
    const QueuePair queues = QueuePair::at();
    for (const size_t size : {28U, 29U, 30U, 31U, 60U, 112U, 4096U}) {
        SCOPED_TRACE(size);
        const std::string text(size, 'x');
        expect_traced_exchange(profile(3, text, "b"), queues);
        expect_traced_exchange(profile(3, "a", text), queues);
        expect_traced_exchange(profile(3, text, text), queues);
        const std::string payload = calls::sent().back().payload;
        EXPECT_EQ(payload[29], '\0');
        EXPECT_EQ(payload.substr(59, 32), std::string(31, '\0') + "3");
    }
}

TEST(Profile, SendsTextsAsTheyAre)
{
    const QueuePair queues = QueuePair::at();
    for (const char *text : {"", "%s%n%d%%", " IP ", "\xFF\x01"})
        expect_traced_exchange(profile(1, text, text), queues);
}

TEST(Profile, TakesANullTextForAnEmptyOne)
{
    AtRequest request = profile(7, "", "");
    request.call = [] { return shared_CMIF_set_Profile(7, nullptr, nullptr); };
    expect_traced_round_trip(request);
}
