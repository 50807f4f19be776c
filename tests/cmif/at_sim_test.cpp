// The SIM security requests: what travels and what is printed. What the two queries read is in
// at_sim_queries_test.cpp.
#include "cmif/cmif.h"
#include "tests/support/at_checks.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <gtest/gtest.h>

namespace
{
int counters[4];
char pin_mode[64];

const AtRequest get_counters{
    .name = "shared_CMIF_get_mobilePINPUKC",
    .call = [] { return shared_CMIF_get_mobilePINPUKC(counters); },
    .code = 4,
    .follow_up = {"get lte_mobile_pin1c", "print Get nvram lte_mobile_pin1c=''",
                  "get lte_mobile_puk1c", "print Get nvram lte_mobile_puk1c=''",
                  "get lte_mobile_pin2c", "print Get nvram lte_mobile_pin2c=''",
                  "get lte_mobile_puk2c", "print Get nvram lte_mobile_puk2c=''"},
};

const AtRequest get_pin_mode{
    .name = "shared_CMIF_get_mobileSimPINMode",
    .call = [] { return shared_CMIF_get_mobileSimPINMode(pin_mode); },
    .code = 8,
    .follow_up = {"get lte_sim_pin_mode", "print Get nvram lte_sim_pin_mode =''"},
};

// A setter of one or two texts, which go to the first two fields and are both printed.
AtRequest one_text(const char *name, int (*set)(const char *), long code, const std::string &first)
{
    return {.name = name,
            .call = [=] { return set(first.c_str()); },
            .code = code,
            .fields = {.set_string = first},
            .after_code = {"set_string=" + text_at(at_payload({.set_string = first}), 0)}};
}

AtRequest two_texts(const char *name, int (*set)(const char *, const char *), long code,
                    const std::string &first, const std::string &second)
{
    const AtFields fields{.set_string = first, .set_string2 = second};
    const std::string payload = at_payload(fields);
    return {
        .name = name,
        .call = [=] { return set(first.c_str(), second.c_str()); },
        .code = code,
        .fields = fields,
        .after_code = {"set_string=" + text_at(payload, 0), "set_string2=" + text_at(payload, 30)}};
}

AtRequest enter_pin(const std::string &pin)
{
    return one_text("shared_CMIF_set_EntermobilePIN", shared_CMIF_set_EntermobilePIN, 12, pin);
}

AtRequest unlock_network(const std::string &key)
{
    return one_text("shared_CMIF_set_NetworkPersonalizationUNLock",
                    shared_CMIF_set_NetworkPersonalizationUNLock, 11, key);
}

AtRequest change_pin(const std::string &first, const std::string &second)
{
    return two_texts("shared_CMIF_set_ChangemobileSimPIN", shared_CMIF_set_ChangemobileSimPIN, 13,
                     first, second);
}

AtRequest enter_puk(const std::string &first, const std::string &second)
{
    return two_texts("shared_CMIF_set_EntermobilePINPUK", shared_CMIF_set_EntermobilePINPUK, 14,
                     first, second);
}

AtRequest set_pin_mode(const std::string &first, const std::string &second)
{
    return two_texts("shared_CMIF_set_mobileSimPINMode", shared_CMIF_set_mobileSimPINMode, 9, first,
                     second);
}

// The lock's first argument travels as the value, after the texts; nothing is printed.
AtRequest lock_network(const std::string &first, const std::string &second,
                       const std::string &third, const std::string &fourth)
{
    return {
        .name = "shared_CMIF_set_NetworkPersonalizationLock",
        .call =
            [=] {
                return shared_CMIF_set_NetworkPersonalizationLock(first.c_str(), second.c_str(),
                                                                  third.c_str(), fourth.c_str());
            },
        .code = 10,
        .fields = {
            .set_string = second, .set_string2 = third, .set_string3 = fourth, .set_value = first}};
}

const AtRequest requests[] = {
    get_counters,
    get_pin_mode,
    set_pin_mode("1", "1234"),
    lock_network("PN", "1", "00101", "12345678"),
    unlock_network("12345678"),
    enter_pin("1234"),
    change_pin("1234", "4321"),
    enter_puk("87654321", "4321"),
};

class SimRequests : public testing::TestWithParam<AtCheck>
{
};
} // namespace

TEST_P(SimRequests, Pass)
{
    for (const AtRequest &request : requests)
        GetParam().check(request);
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, SimRequests, testing::ValuesIn(at_checks), check_name);

// 29 characters fit; more overflow into the following fields, and never into ret_code.
TEST(SimRequestTexts, OverflowIntoTheNextFields)
{
    for (const size_t size : {29U, 30U, 31U, 59U, 60U, 110U, 111U, 112U, 113U, 4096U}) {
        SCOPED_TRACE(size);
        const std::string text(size, 'x');
        std::vector<AtRequest> rows{
            enter_pin(text),          unlock_network(text),        change_pin(text, "4321"),
            change_pin("1234", text), change_pin(text, text),      change_pin(text, ""),
            enter_puk(text, "4321"),  enter_puk("87654321", text), set_pin_mode(text, "123"),
            set_pin_mode("1", text),
        };
        for (const AtRequest &request : rows) {
            SCOPED_TRACE(request.name);
            store::set("debug_at_cmif", "1");
            const QueuePair queues = QueuePair::at();
            queues.reply(request.code, at_reply(0));
            EXPECT_EQ(record(request.call).output, output_of(steps_of(request, queues.requests())));
            const std::optional<Message> sent = queues.take_request();
            ASSERT_TRUE(sent.has_value());
            EXPECT_EQ(sent->payload, at_payload(request.fields));
        }
    }
}

// The value first, then the texts in order: what runs on overwrites what is there already, and ends
// with its NUL before the reply word.
std::string lock_payload(const std::string (&texts)[4])
{
    constexpr size_t offsets[] = {90, 0, 30, 60};
    std::string payload(116, '\0');
    for (size_t field = 0; field < 4; ++field) {
        const std::string text = texts[field].substr(0, 111 - offsets[field]) + '\0';
        payload.replace(offsets[field], text.size(), text);
    }
    return payload;
}

TEST(NetworkLock, KeepsOverLongTextsInTheRecord)
{
    for (size_t which = 0; which < 4; ++which) {
        for (const size_t size : {22U, 30U, 52U, 112U, 4096U}) {
            std::string texts[] = {"PN", "1", "00101", "12345678"};
            texts[which] = std::string(size, 'x');
            const AtRequest request = lock_network(texts[0], texts[1], texts[2], texts[3]);
            const QueuePair queues = QueuePair::at();
            queues.reply(request.code, at_reply(0));
            EXPECT_EQ(record(request.call).result, 0);
            const std::string sent = queues.take_request().value_or(Message{}).payload;
            ASSERT_EQ(sent.size(), 116U);
            EXPECT_EQ(sent, lock_payload(texts)) << which << " of " << size;
        }
    }
}

// Texts travel byte for byte, and are never a format.
TEST(SimRequestTexts, AreSentByteForByte)
{
    for (const char *text : {"", "%s%n%d%%", " 12 34 ", "\xFF\x01", "a'b\"c"}) {
        const AtRequest request = change_pin(text, text);
        store::set("debug_at_cmif", "1");
        const QueuePair queues = QueuePair::at();
        queues.reply(13, at_reply(0));
        EXPECT_EQ(record(request.call).output, output_of(steps_of(request, queues.requests())));
        EXPECT_EQ(queues.take_request().value_or(Message{}).payload, at_payload(request.fields));
    }
}

TEST(SimRequestTexts, AreEmptyForNull)
{
    const std::pair<AtRequest, std::function<int()>> rows[] = {
        {enter_pin(""), [] { return shared_CMIF_set_EntermobilePIN(nullptr); }},
        {unlock_network(""), [] { return shared_CMIF_set_NetworkPersonalizationUNLock(nullptr); }},
        {change_pin("", "2"), [] { return shared_CMIF_set_ChangemobileSimPIN(nullptr, "2"); }},
        {enter_puk("1", ""), [] { return shared_CMIF_set_EntermobilePINPUK("1", nullptr); }},
        {lock_network("", "", "", ""),
         [] {
             return shared_CMIF_set_NetworkPersonalizationLock(nullptr, nullptr, nullptr, nullptr);
         }},
    };
    for (const auto &[row, call] : rows) {
        AtRequest request = row;
        request.call = call;
        expect_traced_round_trip(request);
    }
}

TEST(PinMode, RefusesNullTextsBeforeItTouchesAnything)
{
    store::set("debug_at_cmif", "1");
    EXPECT_EQ(shared_CMIF_set_mobileSimPINMode(nullptr, "1234"), 5);
    EXPECT_EQ(shared_CMIF_set_mobileSimPINMode("1", nullptr), 5);
    EXPECT_EQ(shared_CMIF_set_mobileSimPINMode(nullptr, nullptr), 5);
    EXPECT_EQ(shared_CMIF_get_mobileSimPINMode(nullptr), 5);
    EXPECT_EQ(calls::count("msgget"), 0);
    EXPECT_EQ(store::accesses(), 0);
    EXPECT_FALSE(queue_exists(899));
    EXPECT_FALSE(queue_exists(900));
}
