// Searches for operators and lists of messages, as the simulated modem leaves them.
#include "tests/support/at_server.h"

namespace
{

using namespace std::chrono_literals;

using AtLists = AtServer;

TEST_F(AtLists, ASearchLeavesTheListAndThenAnswers)
{
    start();
    EXPECT_EQ(ask(24), answer::sim_pin_required);
    unlock();
    EXPECT_FALSE(std::filesystem::exists(CMIF_PROVIDER_LIST_FILE));
    EXPECT_EQ(ask(23), answer::ok);
    EXPECT_EQ(ask(24), answer::ok);
    const std::string list = read(CMIF_PROVIDER_LIST_FILE);
    EXPECT_EQ(list.find("+COPS: (2,\"Test Network\",\"Test\",\"00101\",7),("), 0U) << list;
    EXPECT_NE(list.find("(3,\"Closed Test Network\""), std::string::npos);
    EXPECT_EQ(ask(23), answer::ok);
}

TEST_F(AtLists, OthersAreServedWhileASearchRuns)
{
    cmif_sim::ServerOptions options = quick();
    options.pace = 0.1;
    start(options);
    unlock();
    send(record_of(24, {}));
    send(record_of(24, {})); // a second caller joins the search
    EXPECT_EQ(ask(23), answer::search_running);
    EXPECT_EQ(reply(24, 1ms), std::nullopt);
    EXPECT_EQ(reply(24), answer::ok);
    EXPECT_EQ(reply(24), answer::ok);
    EXPECT_EQ(reply(24, 20ms), std::nullopt);
    EXPECT_EQ(ask(23), answer::ok);
    EXPECT_EQ(ask(24), answer::ok); // and another one after it
}

TEST_F(AtLists, ASearchWithoutItsRadioFails)
{
    cmif_sim::ServerOptions options = quick();
    options.pace = 0.1;
    start(options);
    unlock();
    send(record_of(24, {}));
    EXPECT_EQ(set_functionality(4), answer::ok);
    EXPECT_EQ(reply(24), answer::not_allowed);
    EXPECT_EQ(ask(23), answer::not_allowed);
    EXPECT_FALSE(std::filesystem::exists(CMIF_PROVIDER_LIST_FILE));
}

TEST_F(AtLists, AListThatCanNotBeWrittenIsReported)
{
    start();
    unlock();
    std::filesystem::create_directory(CMIF_PROVIDER_LIST_FILE);
    write(std::filesystem::path(CMIF_PROVIDER_LIST_FILE) / "file", "");
    EXPECT_EQ(ask(24), answer::file_not_written);
    std::filesystem::remove_all(CMIF_PROVIDER_LIST_FILE);
    EXPECT_EQ(ask(24), answer::ok);
}

TEST_F(AtLists, MessagesAreListedAndThenRead)
{
    start();
    EXPECT_EQ(ask(18), answer::sim_pin_required);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "0");
    unlock();
    EXPECT_EQ(ask(18), answer::ok);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "6");
    EXPECT_EQ(get("lte_mobile_sms_unreads"), "3");
    EXPECT_EQ(get("lte_mobile_sms_id_4"), "5");
    EXPECT_EQ(get("lte_mobile_sms_stat_1"), "REC READ");
    EXPECT_EQ(get("lte_mobile_sms_stat_3"), "REC UNREAD");
    EXPECT_EQ(get("lte_mobile_sms_da_3"), "+12025550142");
    EXPECT_EQ(get("lte_mobile_sms_scts_3"), "24/03/02,18:30:11+04");
    EXPECT_EQ(get("lte_mobile_sms_text_2").size(), 160U);
    EXPECT_EQ(get("lte_mobile_sms_text_3"), "Battery is 100%% full, signal at 5%%%%.");
    EXPECT_GT(get("lte_mobile_sms_text_5").size(), 4000U);
    EXPECT_LT(get("lte_mobile_sms_text_5").size(), 8000U);
    EXPECT_EQ(ask(18), answer::ok);
    EXPECT_EQ(get("lte_mobile_sms_unreads"), "0");
    EXPECT_EQ(get("lte_mobile_sms_stat_3"), "REC READ");
}

TEST_F(AtLists, DeletedMessagesLeaveTheStore)
{
    start();
    EXPECT_EQ(ask(19, {"3", "0"}), answer::sim_pin_required);
    unlock();
    EXPECT_EQ(ask(18), answer::ok);
    EXPECT_EQ(ask(19, {"3", "0"}), answer::ok);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "5");
    EXPECT_EQ(get("lte_mobile_sms_id_3"), "5");
    EXPECT_EQ(get("lte_mobile_sms_id_6"), "");
    EXPECT_EQ(get("lte_mobile_sms_text_6"), "");
    EXPECT_EQ(ask(19, {"3", "0"}), answer::invalid_index);
    EXPECT_EQ(ask(19, {"", "4"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(19, {"0", "4"}), answer::ok);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "0");
    EXPECT_EQ(get("lte_mobile_sms_id_1"), "");
}

} // namespace
