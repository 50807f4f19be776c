// Messages that arrive: one, in parts, too many, and those of bytes that are no text.
#include "modems/simulated/sms_text.h"
#include "tests/support/commanded_modem.h"

namespace
{

using namespace daemons;
using namespace simulated;
using namespace std::chrono_literals;

class MessageCommands : public CommandedModem
{
protected:
    void SetUp() override { run("state registered"); }

    std::vector<Message> list()
    {
        EXPECT_EQ(modem.list_messages(), CmeError::ok);
        return status().messages;
    }
};

TEST_F(MessageCommands, OneArrivesAtTheLowestFreeIndex)
{
    clock.advance(65s);
    run("sms inject +12025550155 Grüße, 20 € \"und  mehr\" 😀");
    EXPECT_EQ(status().messages.size(), 0U); // until it is listed
    const std::vector<Message> messages = list();
    ASSERT_EQ(messages.size(), 7U);
    EXPECT_EQ(messages[3].index, 4);
    EXPECT_TRUE(messages[3].unread);
    EXPECT_EQ(messages[3].sender, "+12025550155");
    EXPECT_EQ(messages[3].text, "Grüße, 20 € und  mehr 😀");
    EXPECT_EQ(messages[3].time, "24/03/06,12:01:05+04");
    EXPECT_FALSE(list()[3].unread);
}

TEST_F(MessageCommands, ALongTextArrivesInParts)
{
    modem.delete_messages(0, DeleteFlag::all);
    run("sms inject Info " + std::string(153, 'a') + std::string(153, 'b') + "c");
    const std::vector<Message> messages = list();
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[0].text, std::string(153, 'a'));
    EXPECT_EQ(messages[1].text, std::string(153, 'b'));
    EXPECT_EQ(messages[2].text, "c");
    EXPECT_EQ(messages[2].index, 3);
}

TEST_F(MessageCommands, AnEmptyStoreListsNothing)
{
    modem.delete_messages(0, DeleteFlag::all);
    EXPECT_TRUE(list().empty());
    EXPECT_EQ(modem.delete_messages(1, DeleteFlag::one), CmeError::invalid_index);
    EXPECT_EQ(modem.delete_messages(0, DeleteFlag::all), CmeError::ok);
}

TEST_F(MessageCommands, TheNetworkKeepsWhatCanNotBeDelivered)
{
    run("coverage none");
    run("sms inject 1 hello");
    EXPECT_EQ(list().size(), 6U);
    run("coverage full");
    clock.advance(2999ms);
    EXPECT_EQ(list().size(), 6U);
    clock.advance(1ms);
    EXPECT_EQ(list().size(), 7U);
}

TEST_F(MessageCommands, AStormFillsTheStoreAndTheRestFollows)
{
    run("sms storm 500");
    EXPECT_EQ(list().size(), Messages::capacity);
    EXPECT_EQ(list().back().text, "Message 249 of 500");
    EXPECT_EQ(modem.delete_messages(0, DeleteFlag::all), CmeError::ok);
    EXPECT_EQ(list().size(), 251U);
    EXPECT_EQ(list().back().text, "Message 500 of 500");
    EXPECT_EQ(error("sms storm 0"),
              "11: the number of messages is a whole number from 1 to 10000, not '0'");
}

TEST_F(MessageCommands, RefuseInvalidUtf8)
{
    EXPECT_EQ(error("sms inject 1 ok \xff"), "17: the text is UTF-8, which has no byte 0xff here");
    EXPECT_EQ(error("sms inject 1 gr\xfc\xdf"),
              "16: the text is UTF-8, which has no byte 0xfc here");
    EXPECT_EQ(error("sms inject 1"), "13: the text is missing");
    EXPECT_EQ(error("sms send 1 x"), "5: what arrives is one of: inject, storm, not 'send'");
}

TEST_F(MessageCommands, HaveASender)
{
    for (const std::string sender : {"Shop", "+4912345", "12345678901234567890", "A-1 & Co."})
        EXPECT_EQ(error("sms inject \"" + sender + "\" x"), "no error") << sender;
    for (const std::string sender : {"", "LongerThan11", "123456789012345678901", "Büro"})
        EXPECT_EQ(error("sms inject \"" + sender + "\" x"),
                  "12: the sender is a number of at most 20 digits, or a name of at most 11 "
                  "characters of ASCII, not '" +
                      sender + "'");
}

TEST(SmsText, FindsInvalidUtf8)
{
    for (const char *good : {"", "a", "ü", "€", "😀", "\xf4\x8f\xbf\xbf"})
        EXPECT_EQ(find_no_utf8(good), std::nullopt) << good;
    for (const char *bad : {"\x80", "\xc3", "\xc0\xaf", "\xe2\x82", "\xed\xa0\x80", "\xe0\x80\x80",
                            "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xff", "\xc3\x28"})
        EXPECT_EQ(find_no_utf8(std::string("ok") + bad), 2U) << bad;
}

std::string repeat(const std::string &text, int times)
{
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

// The last text of one message, and the first that takes two.
TEST(SmsText, FillsAMessageToItsLastPlace)
{
    const struct {
        const char *character;
        int fit, fit_in_part;
    } rows[] = {{"a", 160, 153}, {"ü", 160, 153}, {"€", 80, 76},
                {"ж", 70, 67},   {"😀", 35, 33},   {"☕", 70, 67}};
    for (const auto &row : rows) {
        EXPECT_EQ(sms_parts(repeat(row.character, row.fit)).size(), 1U) << row.character;
        const std::vector<std::string> parts = sms_parts(repeat(row.character, row.fit + 1));
        ASSERT_EQ(parts.size(), 2U) << row.character;
        EXPECT_EQ(parts[0], repeat(row.character, row.fit_in_part)) << row.character;
        EXPECT_EQ(parts[1], repeat(row.character, row.fit + 1 - row.fit_in_part));
    }
    EXPECT_EQ(sms_parts(""), std::vector<std::string>{""});
}

} // namespace
