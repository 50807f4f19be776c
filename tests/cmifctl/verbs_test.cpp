// The list of messages, beside a daemon that answers and a store that a test has filled.
#include "cmifctl/verbs/messages.h"
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

} // namespace
