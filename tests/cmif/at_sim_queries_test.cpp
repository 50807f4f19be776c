// The two SIM queries: what they read once the daemon has published and answered.
#include "cmif/cmif.h"
#include "tests/support/at_request.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{
int counters[4];
char pin_mode[5000];

const AtRequest get_counters{
    .name = "shared_CMIF_get_mobilePINPUKC",
    .call = [] { return shared_CMIF_get_mobilePINPUKC(counters); },
    .code = 4,
};

const AtRequest get_pin_mode{
    .name = "shared_CMIF_get_mobileSimPINMode",
    .call = [] { return shared_CMIF_get_mobileSimPINMode(pin_mode); },
    .code = 8,
};

// One call; the daemon publishes, then answers.
Recorded run_query(const AtRequest &request, int ret_code,
                   const std::vector<std::pair<std::string, std::string>> &published)
{
    const QueuePair queues = QueuePair::at();
    const ScriptedDaemon daemon(queues, [&](const Message &message) {
        for (const auto &[key, value] : published)
            store::set(key, value);
        queues.reply(message.type, at_reply(ret_code));
    });
    return record(request.call);
}

void clear_counters()
{
    for (int &counter : counters)
        counter = 4711;
}
} // namespace

TEST(PinMode, IsWhatTheDaemonPublishes)
{
    store::set("debug_at_cmif", "1");
    for (const std::string &value :
         {std::string("1"), std::string(), std::string("%s%n READY"), std::string(4096, 'm')}) {
        store::set("lte_sim_pin_mode", "stale");
        const Recorded run = run_query(get_pin_mode, 77, {{"lte_sim_pin_mode", value}});
        EXPECT_EQ(run.result, 77);
        EXPECT_EQ(std::string(pin_mode), value);
        EXPECT_TRUE(run.output.ends_with("cmif: shared_CMIF_get_mobileSimPINMode msgrcv success\n"
                                         "Get nvram lte_sim_pin_mode ='" +
                                         value + "'\n"));
    }
}

TEST(PinMode, IsUntouchedWhenTheChannelFails)
{
    strcpy(pin_mode, "before");
    expect_silent_failures(get_pin_mode);
    EXPECT_STREQ(pin_mode, "before");
    EXPECT_EQ(store::reads("lte_sim_pin_mode"), 0);
}

TEST(Counters, AreWhatTheDaemonPublishes)
{
    store::set("debug_at_cmif", "1");
    for (const int ret_code : {0, 1, 2, 3, -1}) {
        clear_counters();
        store::set("lte_mobile_pin1c", "9");
        const Recorded run = run_query(get_counters, ret_code,
                                       {{"lte_mobile_pin1c", "3"},
                                        {"lte_mobile_puk1c", "10"},
                                        {"lte_mobile_pin2c", "2"},
                                        {"lte_mobile_puk2c", "7"}});
        EXPECT_EQ(run.result, ret_code);
        EXPECT_EQ(counters[0], 3);
        EXPECT_EQ(counters[1], 10);
        EXPECT_EQ(counters[2], 2);
        EXPECT_EQ(counters[3], 7);
        EXPECT_TRUE(run.output.ends_with("cmif: shared_CMIF_get_mobilePINPUKC msgrcv success\n"
                                         "Get nvram lte_mobile_pin1c='3'\n"
                                         "Get nvram lte_mobile_puk1c='10'\n"
                                         "Get nvram lte_mobile_pin2c='2'\n"
                                         "Get nvram lte_mobile_puk2c='7'\n"));
    }
}

// Three characters of each count.
TEST(Counters, AreConvertedFromShortTexts)
{
    store::set("debug_at_cmif", "1");
    clear_counters();
    const Recorded run = run_query(get_counters, 0,
                                   {{"lte_mobile_pin1c", "12345"},
                                    {"lte_mobile_puk1c", "none"},
                                    {"lte_mobile_pin2c", "-1"},
                                    {"lte_mobile_puk2c", std::string(4096, '9')}});
    EXPECT_EQ(counters[0], 123);
    EXPECT_EQ(counters[1], 0);
    EXPECT_EQ(counters[2], -1);
    EXPECT_EQ(counters[3], 999);
    EXPECT_TRUE(run.output.ends_with("Get nvram lte_mobile_pin1c='123'\n"
                                     "Get nvram lte_mobile_puk1c='non'\n"
                                     "Get nvram lte_mobile_pin2c='-1'\n"
                                     "Get nvram lte_mobile_puk2c='999'\n"));
    clear_counters();
    run_query(get_counters, 0,
              {{"lte_mobile_pin1c", ""}, {"lte_mobile_puk1c", ""}, {"lte_mobile_pin2c", "1x"}});
    store::unset("lte_mobile_puk2c");
    run_query(get_counters, 0, {});
    EXPECT_EQ(counters[0], 0);
    EXPECT_EQ(counters[1], 0);
    EXPECT_EQ(counters[2], 1);
    EXPECT_EQ(counters[3], 0);
}

TEST(Counters, AreUntouchedWhenTheChannelFails)
{
    clear_counters();
    store::set("lte_mobile_pin1c", "3");
    expect_silent_failures(get_counters);
    for (const int counter : counters)
        EXPECT_EQ(counter, 4711);
    EXPECT_EQ(store::reads("lte_mobile_pin1c"), 0);
}

// Without an array the request is made all the same, and the daemon's code comes back.
TEST(Counters, AreDroppedWithoutAnArray)
{
    AtRequest request = get_counters;
    request.call = [] { return shared_CMIF_get_mobilePINPUKC(nullptr); };
    EXPECT_EQ(run_query(request, 7, {{"lte_mobile_pin1c", "3"}}).result, 7);
    EXPECT_EQ(calls::sent().size(), 1U);
}

TEST(Counters, HaveATraceSiteEach)
{
    store::set("debug_at_cmif", "-1");
    for (int calls = 1; calls <= 2; ++calls) {
        run_query(get_counters, 0, {});
        EXPECT_EQ(store::reads("debug_at_cmif"), calls * 8); // queue, code, sent, received, and 4
    }
}
