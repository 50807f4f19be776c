// The radio and service requests: the value that each argument becomes, and the lines around it.
#include "cmif/cmif.h"
#include "tests/support/at_checks.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>

namespace
{
char domain_service[5000];

const AtRequest firehose{
    .name = "shared_CMIF_set_AT_qfirehose",
    .call = shared_CMIF_set_AT_qfirehose,
    .code = 20,
    .words = &daemon_words,
    .waits = false,
};

const AtRequest factory_reset{
    .name = "shared_CMIF_set_FactoryReset",
    .call = shared_CMIF_set_FactoryReset,
    .code = 21,
    .words = &daemon_words,
};

const AtRequest timezone_request{
    .name = "shared_CMIF_set_timezone",
    .call = shared_CMIF_set_timezone,
    .code = 1,
    .words = &daemon_words,
};

const AtRequest get_domain_service{
    .name = "shared_CMIF_get_DomainServiceStatus",
    .call = [] { return shared_CMIF_get_DomainServiceStatus(domain_service); },
    .code = 6,
    .follow_up = {"get lte_pocket_domain_servive_status",
                  "print Get nvram lte_pocket_domain_servive_status =''"},
};

AtRequest network_mode(int mode, const std::string &value)
{
    return {.name = "shared_CMIF_set_mobileNetworkMode",
            .call = [=] { return shared_CMIF_set_mobileNetworkMode(mode); },
            .code = 2,
            .fields = {.set_value = value},
            .after_code = {"set_value=" + value}};
}

AtRequest set_domain_service(int status, const std::string &value)
{
    return {.name = "shared_CMIF_set_DomainServiceStatus",
            .call = [=] { return shared_CMIF_set_DomainServiceStatus(status); },
            .code = 7,
            .fields = {.set_value = value},
            .before_code = {"set_mode=" + std::to_string(status)},
            .after_code = {"set_value=" + value}};
}

AtRequest roaming(int mode, const std::string &value)
{
    return {.name = "shared_CMIF_set_mobileInternationalRoam",
            .call = [=] { return shared_CMIF_set_mobileInternationalRoam(mode); },
            .code = 15,
            .fields = {.set_value = value},
            .before_code = {"set_mode=" + std::to_string(mode)},
            .after_code = {"set_value=" + value}};
}

const AtRequest automatic_selection{
    .name = "shared_CMIF_SetNetworkMode",
    .call = [] { return shared_CMIF_SetNetworkMode(1); },
    .code = 3,
    .fields = {.set_value = "0"},
    .after_code = {"set_value=0"},
};

AtRequest operator_format(int format, const std::string &value)
{
    return {.name = "shared_Set_Operator_Selection_switch_format",
            .call = [=] { return shared_Set_Operator_Selection_switch_format(format); },
            .code = 16,
            .fields = {.set_value = value},
            .before_code = {"cmd_send_buff = " + value},
            .after_code = {"snd_op.set_value=" + value}};
}

// One of each request.
const AtRequest requests[] = {
    firehose,
    factory_reset,
    timezone_request,
    network_mode(3, "3"),
    get_domain_service,
    roaming(0, "255"),
    automatic_selection,
    set_domain_service(1, "1"),
    operator_format(2, "2"),
};

// One of each argument: those of the tables, and others.
const AtRequest arguments[] = {
    network_mode(0, "0"),
    network_mode(1, "1"),
    network_mode(2, "2"),
    network_mode(3, "3"),
    network_mode(4, ""),
    network_mode(-1, ""),
    network_mode(256, ""),
    network_mode(INT_MIN, ""),
    set_domain_service(0, "0"),
    set_domain_service(1, "1"),
    set_domain_service(2, ""),
    set_domain_service(-1, ""),
    set_domain_service(INT_MAX, ""),
    roaming(2, "1"),
    roaming(1, "2"),
    roaming(0, "255"),
    roaming(3, ""),
    roaming(255, ""),
    roaming(-1, ""),
    roaming(INT_MIN, ""),
    operator_format(0, "0"),
    operator_format(1, "1"),
    operator_format(2, "2"),
    operator_format(-1, "-1"),
    operator_format(INT_MAX, "2147483647"),
    operator_format(INT_MIN, "-2147483648"),
};

class RadioRequests : public testing::TestWithParam<AtCheck>
{
};
} // namespace

TEST_P(RadioRequests, Pass)
{
    for (const AtRequest &request : requests)
        if (request.waits || !GetParam().of_reply)
            GetParam().check(request);
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, RadioRequests, testing::ValuesIn(at_checks), check_name);

TEST(RadioRequestValues, FollowFromTheArgument)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    for (const AtRequest &request : arguments) {
        SCOPED_TRACE(request.name + text(request.after_code));
        queues.reply(request.code, at_reply(9));
        const Recorded run = record(request.call);
        EXPECT_EQ(run.result, 9);
        EXPECT_EQ(run.output, output_of(steps_of(request, queues.requests())));
        const Message sent = queues.take_request().value_or(Message{});
        EXPECT_EQ(sent.type, request.code);
        EXPECT_EQ(sent.payload, at_payload(request.fields));
    }
}

// Any number but 1 sends nothing, yet looks both queues up.
TEST(NetworkSelection, SendsNothingForAnotherModeThanAutomatic)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    bool first = true;
    for (const int mode : {0, 2, -1, 257, INT_MIN}) {
        SCOPED_TRACE(mode);
        const Recorded run = record([=] { return shared_CMIF_SetNetworkMode(mode); });
        EXPECT_EQ(run.result, 0);
        const std::string line = "key msqid=" + std::to_string(queues.requests());
        EXPECT_EQ(run.output, line + "\n");
        EXPECT_EQ(run.steps, join({{"msgget(899, 01666)", "msgget(900, 01666)"},
                                   first ? Lines{"get debug_at_cmif"} : Lines{},
                                   {"print " + line}}));
        first = false;
    }
    EXPECT_FALSE(queues.take_request().has_value());
}

TEST(NetworkSelection, CreatesBothQueuesEvenWhenItSendsNothing)
{
    EXPECT_EQ(shared_CMIF_SetNetworkMode(2), 0);
    EXPECT_TRUE(queue_exists(899));
    EXPECT_TRUE(queue_exists(900));
    const QueuePair removed_in_the_end = QueuePair::at();
}

TEST(NetworkSelection, FailsWithoutAQueueEvenWhenItWouldSendNothing)
{
    const QueuePair queues = QueuePair::at();
    store::set("debug_at_cmif", "1");
    calls::script("msgget", {calls::fails(ENOSPC)});
    Recorded run = record([] { return shared_CMIF_SetNetworkMode(0); });
    EXPECT_EQ(run.result, 2);
    EXPECT_EQ(run.output, "cmif_common:shared_CMIF_SetNetworkMode msgget failed\n");
    calls::script("msgget", {calls::real, calls::fails(ENOSPC)});
    run = record([] { return shared_CMIF_SetNetworkMode(2); });
    EXPECT_EQ(run.result, -1);
    EXPECT_EQ(run.output, "[shared_CMIF_SetNetworkMode] - msgget failed\n");
}

// The firmware-download request is sent without a daemon, and creates no reply queue.
TEST(Firehose, IsSentWithoutADaemon)
{
    EXPECT_EQ(shared_CMIF_set_AT_qfirehose(), 0);
    EXPECT_TRUE(queue_exists(899));
    EXPECT_FALSE(queue_exists(900));
    const QueuePair queues = QueuePair::at();
    const Message sent = queues.take_request().value_or(Message{});
    EXPECT_EQ(sent.type, 20);
    EXPECT_EQ(sent.payload, std::string(116, '\0'));
}

TEST(Firehose, ReceivesNothing)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(20, at_reply(5));
    EXPECT_EQ(shared_CMIF_set_AT_qfirehose(), 0);
    EXPECT_EQ(calls::count("msgrcv"), 0);
    EXPECT_TRUE(queues.take_reply().has_value());
}

TEST(DomainService, IsWhatTheDaemonPublishes)
{
    store::set("debug_at_cmif", "1");
    for (const std::string &value :
         {std::string("1"), std::string(), std::string("%s%n"), std::string(4096, 'd')}) {
        store::set("lte_pocket_domain_servive_status", "stale");
        const QueuePair queues = QueuePair::at();
        const ScriptedDaemon daemon(queues, [&](const Message &request) {
            store::set("lte_pocket_domain_servive_status", value);
            queues.reply(request.type, at_reply(-5));
        });
        const Recorded run = record(get_domain_service.call);
        EXPECT_EQ(run.result, -5);
        EXPECT_EQ(std::string(domain_service), value);
        EXPECT_TRUE(
            run.output.ends_with("cmif: shared_CMIF_get_DomainServiceStatus msgrcv success\n"
                                 "Get nvram lte_pocket_domain_servive_status ='" +
                                 value + "'\n"));
    }
}

TEST(DomainService, RefusesNullBeforeItTouchesAnything)
{
    store::set("debug_at_cmif", "1");
    EXPECT_EQ(shared_CMIF_get_DomainServiceStatus(nullptr), 5);
    EXPECT_EQ(calls::count("msgget"), 0);
    EXPECT_EQ(store::accesses(), 0);
    EXPECT_FALSE(queue_exists(899));
}

TEST(DomainService, IsUntouchedWhenTheChannelFails)
{
    strcpy(domain_service, "before");
    expect_silent_failures(get_domain_service);
    EXPECT_STREQ(domain_service, "before");
    EXPECT_EQ(store::reads("lte_pocket_domain_servive_status"), 0);
}
