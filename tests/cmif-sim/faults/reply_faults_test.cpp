// Replies that go wrong: what lies in the reply queue, on both channels.
#include "tests/support/faulty_server.h"

namespace
{

using namespace std::chrono_literals;

constexpr long counters = 4; // an AT request that is always answered with 0
constexpr long sim = 6;      // a QMI one, answered with the SIM's status
constexpr std::size_t at_text = CMIF_AT_PAYLOAD - sizeof(int);

int number_at(const std::string &payload, std::size_t offset)
{
    int number = 0;
    std::memcpy(&number, payload.data() + offset, sizeof number);
    return number;
}

class ReplyFault : public FaultyServer
{
protected:
    void SetUp() override { start(); }

    static std::string at_reply()
    {
        send_at(counters);
        return payload(at_replies(), counters).value_or("nothing");
    }
    static std::string qmi_reply()
    {
        QmiServer::send(sim, "");
        return payload(qmi_replies(), sim).value_or("nothing");
    }
    // After a fault for one request, everything is as it was.
    static void expect_health()
    {
        EXPECT_EQ(at_reply(), std::string(CMIF_AT_PAYLOAD, '\0'));
        EXPECT_EQ(qmi_reply().size(), std::size_t{CMIF_QMI_PAYLOAD});
        EXPECT_EQ(waiting(at_replies()), 0U);
        EXPECT_EQ(waiting(qmi_replies()), 0U);
    }
};

TEST_F(ReplyFault, DelaysByTheTimeOfTheSimulation)
{
    start_at_pace(0.1);
    command("fault at 4 delay 5s");
    send_at(counters);
    EXPECT_FALSE(payload(at_replies(), counters, 300ms));
    EXPECT_TRUE(payload(at_replies(), counters));
    expect_health();
}

TEST_F(ReplyFault, DropsAfterTheRequestWasCarriedOut)
{
    command("fault at 12 drop");
    send_at(12, {"1234"});
    EXPECT_TRUE(eventually_equals("lte_sim_status", "READY"));
    EXPECT_TRUE(stays_silent(at_replies(), 12));
    expect_health();
}

TEST_F(ReplyFault, RepliesTwice)
{
    command("fault all twice");
    at_reply();
    qmi_reply();
    EXPECT_TRUE(payload(at_replies(), counters));
    EXPECT_TRUE(payload(qmi_replies(), sim));
    expect_health();
}

TEST_F(ReplyFault, RepliesWithATypeThatNoCallerAwaits)
{
    command("fault all wrong-type");
    send_at(counters);
    QmiServer::send(sim, "");
    EXPECT_TRUE(payload(at_replies(), counters + 1000));
    EXPECT_TRUE(payload(qmi_replies(), sim + 1000));
    expect_health();
}

TEST_F(ReplyFault, RepliesTooShortOrTooLong)
{
    command("fault all short");
    EXPECT_EQ(at_reply().size(), at_text);
    EXPECT_EQ(qmi_reply().size(), std::size_t{CMIF_QMI_PAYLOAD - 4});
    command("fault at short 116");
    command("fault qmi short 312");
    EXPECT_EQ(at_reply().size(), 0U);
    EXPECT_EQ(qmi_reply().size(), 0U);
    command("fault all long");
    EXPECT_EQ(at_reply().size(), std::size_t{CMIF_AT_PAYLOAD + 8});
    EXPECT_EQ(qmi_reply().size(), std::size_t{CMIF_QMI_PAYLOAD + 8});
    command("fault qmi long 5");
    EXPECT_EQ(qmi_reply().size(), std::size_t{CMIF_QMI_PAYLOAD + 5});
    expect_health();
}

TEST_F(ReplyFault, RepliesWithTextThatHasNoEnd)
{
    command("fault all unterminated");
    const std::string at = at_reply();
    EXPECT_EQ(at.substr(0, at_text), std::string(at_text, 'x'));
    EXPECT_EQ(number_at(at, at_text), answer::ok);
    EXPECT_EQ(qmi_reply(), std::string(CMIF_QMI_PAYLOAD, 'x'));
    expect_health();
}

TEST_F(ReplyFault, RepliesWithNoiseThatIsAlwaysTheSame)
{
    command("fault all noise next 2");
    const std::string first = at_reply();
    EXPECT_EQ(first.size(), std::size_t{CMIF_AT_PAYLOAD});
    EXPECT_NE(number_at(first, at_text), answer::ok);
    EXPECT_EQ(at_reply(), first);
    EXPECT_EQ(qmi_reply().substr(0, first.size()), first);
    qmi_reply();
    expect_health();
}

TEST_F(ReplyFault, RepliesWithTheGivenResult)
{
    command("fault all ret 13");
    EXPECT_EQ(number_at(at_reply(), at_text), 13);
    EXPECT_EQ(number_at(qmi_reply(), 0), 13);
    command("fault at 4 ret -1");
    EXPECT_EQ(number_at(at_reply(), at_text), -1);
    expect_health();
}

TEST_F(ReplyFault, AffectsTheGivenCodeAndSideOnly)
{
    command("fault at 4 ret 13");
    EXPECT_EQ(ask_at(6), answer::ok);
    EXPECT_EQ(number_at(qmi_reply(), 0), 3);
    EXPECT_EQ(number_at(at_reply(), at_text), 13);
    expect_health();
}

TEST_F(ReplyFault, LastsAsLongAsGiven)
{
    command("fault at ret 13 next 2");
    EXPECT_EQ(number_at(at_reply(), at_text), 13);
    EXPECT_EQ(number_at(at_reply(), at_text), 13);
    EXPECT_EQ(number_at(at_reply(), at_text), 0);
    command("fault at ret 14 always");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(number_at(at_reply(), at_text), 14);
    command("fault clear");
    expect_health();
}

TEST_F(ReplyFault, BeginsWithItsEvent)
{
    command("fault at 4 ret 13 after sim-ready");
    EXPECT_EQ(number_at(at_reply(), at_text), 0);
    EXPECT_EQ(ask_at(12, {"1234"}), answer::ok);
    EXPECT_EQ(number_at(at_reply(), at_text), 13);
    command("fault qmi drop after qmi-request 8");
    qmi_reply();
    QmiServer::send(8, "");
    EXPECT_TRUE(stays_silent(qmi_replies(), 8));
    expect_health();
}

TEST_F(ReplyFault, IsListedWhileItIsArmed)
{
    command("fault at 4 delay 1.5s next 2\nfault qmi drop always\nfault at die after registered");
    EXPECT_NE(status().find("fault    at 4 delay 1500ms next 2\n"
                            "fault    at die after registered\n"
                            "fault    qmi drop always\n"),
              std::string::npos)
        << status();
    command("fault clear");
    EXPECT_EQ(status().find("fault"), std::string::npos) << status();
}

TEST_F(ReplyFault, IsPrintedIfVerbose)
{
    server.reset();
    cmif_sim::ServerOptions options = both();
    options.verbose = true;
    start(options);
    command("fault at 4 drop");
    send_at(counters);
    EXPECT_TRUE(stays_silent(at_replies(), counters));
    EXPECT_NE(server->errors().find("AT !! 4 fault: drop\n"), std::string::npos)
        << server->errors();
}

} // namespace
