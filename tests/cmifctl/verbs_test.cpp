// Verbs beside daemons that answer and a store that a test has filled.
#include "client/code_lock.h"
#include "cmifctl/verbs/messages.h"
#include "cmifctl/verbs/registration.h"
#include "doctor_fixture.h"

namespace
{

class Messages : public Doctor
{
protected:
    static void store_messages(int count)
    {
        Child([count] {
            for (int i = 1; i <= count; ++i) {
                const std::string number = std::to_string(i);
                tarnNvramConfig_set(("lte_mobile_sms_id_" + number).c_str(), number.c_str());
                tarnNvramConfig_set(("lte_mobile_sms_text_" + number).c_str(), "hello");
            }
        }).wait();
        set("lte_mobile_sms_counts", std::to_string(count).c_str());
    }
};

TEST_F(Messages, AreReadHoweverManyThereAre)
{
    constexpr int count = 5000;
    store_messages(count);
    const Json read = read_messages({});
    ASSERT_EQ(read["messages"].size(), count);
    EXPECT_EQ(read["messages"][count - 1]["id"], count);
    EXPECT_EQ(read["messages"][count - 1]["text"], "hello");
}

TEST_F(Messages, WithoutSenderAndTimeStampHaveNone)
{
    store_messages(1);
    const Json message = read_messages({})["messages"][0];
    EXPECT_EQ(message["from"], nullptr);
    EXPECT_EQ(message["time"], nullptr);
    EXPECT_EQ(message["scts"], nullptr);
}

TEST_F(Messages, CountedWildlyEndInAClearError)
{
    set("lte_mobile_sms_counts", "2147483647");
    try {
        read_messages({});
        FAIL() << "no failure";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.status(), Exit::other);
        EXPECT_STREQ(failure.what(),
                     "the daemon counts 2147483647 messages, more than a store can hold");
        EXPECT_EQ(failure.hint(), "Restart the daemon: it counts them again.");
    }
    set("lte_mobile_sms_counts", "-1");
    EXPECT_EQ(read_messages({})["messages"].size(), 0U);
}

using Registering = Doctor;

TEST_F(Registering, EndsWithTheStateThatIsKnown)
{
    const std::pair<const char *, const char *> states[]{
        {"", "unknown"}, {"x", "unknown"}, {"2", "searching"}};
    for (const auto &[stored, text] : states) {
        set("lte_network_reg_status_state", stored);
        Context context;
        context.options.timeout = 0.1;
        try {
            wait_for_registration(context, {"00101", {}}, std::chrono::steady_clock::now());
            FAIL() << "registered";
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.status(), Exit::no_answer);
            EXPECT_EQ(failure.what(),
                      std::string("the modem is not registered with 00101 in time: ") + text);
        }
    }
}

using Readings = Doctor;

TEST_F(Readings, NameTheProcessThatKeepsTheirRequest)
{
    const Child holder([] {
        const client::CodeLock lock({{Channel::qmi, CMIF_QMI_GET_SIM_STATUS}}, 0, [] {});
        pause();
    });
    while (!client::lock_process({Channel::qmi, CMIF_QMI_GET_SIM_STATUS}))
        usleep(1000);
    Context context;
    context.options.timeout = 0.1;
    sim_status(context);
    const Json daemon = context.report.document()["daemons"]["qmi"];
    EXPECT_EQ(daemon["state"], nullptr); // it has taken nothing yet
    EXPECT_NE(daemon["reason"].get<std::string>().find(", made by process " +
                                                       std::to_string(holder.process()) + " ("),
              std::string::npos)
        << daemon;
}

} // namespace
