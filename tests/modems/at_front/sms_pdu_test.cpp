// Short messages as PDUs, and the commands that list, read, delete and send them.
#include "at_modem.h"
#include "modems/at_front/sms_pdu.h"

namespace
{

using namespace at_front;

daemons::Message message(const std::string &sender, const std::string &text)
{
    return {7, true, sender, "24/03/01,08:00:05+04", text};
}

TEST(SmsCoding, PacksEightCharactersIntoSevenOctets)
{
    // The examples of the trade.
    EXPECT_EQ(hexadecimal(pack(*septets_of("hellohello"), 0)), "E8329BFD4697D9EC37");
    EXPECT_EQ(text_of_septets(unpack(*octets_of("E8329BFD4697D9EC37"), 10, 0)), "hellohello");
    EXPECT_EQ(hexadecimal(*septets_of("@ €{}")), "00201B651B281B29");
    EXPECT_EQ(septets_of("☕"), std::nullopt);
    EXPECT_EQ(hexadecimal(ucs2_of("☕😀")), "2615D83DDE00");
    EXPECT_EQ(text_of_ucs2(*octets_of("2615D83DDE00")), "☕😀");
    EXPECT_EQ(text_of_ucs2(*octets_of("DE00")), "\ufffd"); // half of a pair
    EXPECT_EQ(octets_of("0"), std::nullopt);
    EXPECT_EQ(octets_of("0G"), std::nullopt);
}

TEST(SmsCoding, GivesEachCharacterBack)
{
    const std::string text = "@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞÆæßÉ !\"#¤%&'()*+,-./0123456789:;<=>?¡"
                             "ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§¿abcdefghijklmnopqrstuvwxyzäöñüà"
                             "\f^{}\\[~]|€";
    const auto septets = septets_of(text);
    ASSERT_TRUE(septets);
    EXPECT_EQ(text_of_septets(*septets), text);
    for (unsigned skipped = 0; skipped < 8; ++skipped)
        EXPECT_EQ(unpack(pack(*septets, skipped), septets->size(), skipped), *septets) << skipped;
}

TEST(SmsPdu, HoldsSenderTimeAndText)
{
    // Centre +12025550190; deliver; sender +12025550142; 7 bits; time stamp; 5 characters.
    const auto pdus = deliver_pdus(message("+12025550142", "hello"), 7);
    ASSERT_EQ(pdus.size(), 1U);
    EXPECT_EQ(pdus[0].digits, "07912120550591F0"
                              "040B912120550541F2"
                              "0000"
                              "42301080005040"
                              "05E8329BFD06");
    EXPECT_EQ(pdus[0].length, 24);
    EXPECT_EQ(deliver_pdus(message("5550142", "é☕"), 7)[0].digits, "07912120550591F0"
                                                                   "040781550541F2"
                                                                   "0008"
                                                                   "42301080005040"
                                                                   "0400E92615");
    // Letters: "Test" is 4 septets in 7 semi-octets.
    EXPECT_EQ(deliver_pdus(message("Test", "a"), 7)[0].digits, "07912120550591F0"
                                                               "0407D0D4F29C0E"
                                                               "0000"
                                                               "42301080005040"
                                                               "0161");
}

TEST(SmsPdu, ThatIsLongIsDivided)
{
    const auto pdus = deliver_pdus(message("+12025550142", std::string(161, 'a')), 7);
    ASSERT_EQ(pdus.size(), 2U);
    EXPECT_NE(pdus[0].digits.find("440B912120550541F2"), std::string::npos); // with a header
    EXPECT_NE(pdus[0].digits.find("A0050003070201C2"), std::string::npos);   // 160 septets with it
    EXPECT_NE(pdus[1].digits.find("0F050003070202C2"), std::string::npos);
    const auto unicode = deliver_pdus(message("+12025550142", std::string(70, 'a') + "☕"), 7);
    ASSERT_EQ(unicode.size(), 2U);
    EXPECT_NE(unicode[0].digits.find("8C050003070201"), std::string::npos); // 6 and 134 octets
}

TEST(SmsPdu, OfATerminalIsRead)
{
    const auto sent = parse_submit("0001000B912120550501F0000005E8329BFD06", 18);
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->recipient, "+12025550100");
    EXPECT_EQ(sent->text, "hello");
    // With a validity period, a service centre, and UCS2.
    const auto other = parse_submit("0791212055059100"
                                    "1100"
                                    "0781550541F2"
                                    "0008AA"
                                    "0400E92615",
                                    16);
    ASSERT_TRUE(other);
    EXPECT_EQ(other->text, "é☕");
    // With a header.
    const auto part = parse_submit("0041000B912120550501F000000C050003070201D06536FB0D", 24);
    ASSERT_TRUE(part);
    EXPECT_EQ(part->text, "hello");
}

TEST(SmsPdu, ThatIsMalformedIsRefused)
{
    const std::string good = "0001000B912120550501F0000005E8329BFD06";
    ASSERT_TRUE(parse_submit(good, 18));
    EXPECT_FALSE(parse_submit(good, 17)); // another length than announced
    EXPECT_FALSE(parse_submit("", 0));
    EXPECT_FALSE(parse_submit("00", 0));
    EXPECT_FALSE(parse_submit("zz" + good, 18));
    for (std::size_t size = 2; size < good.size(); size += 2) // cut anywhere
        EXPECT_FALSE(parse_submit(good.substr(0, size), static_cast<int>(size / 2) - 1)) << size;
}

using AtMessages = AtModem;

TEST_F(AtMessages, AreListedAndRead)
{
    run("state unlocked");
    EXPECT_EQ(answer("AT+CPMS?"), "+CPMS: \"SM\",6,255,\"SM\",6,255,\"SM\",6,255|OK");
    EXPECT_EQ(answer("AT+CMGR=3").substr(0, 12), "+CMGR: 0,,51"); // not read before
    EXPECT_EQ(answer("AT+CMGR=3").substr(0, 12), "+CMGR: 1,,51");
    EXPECT_EQ(answer("AT+CMGR=4"), "+CMS ERROR: 321");
    const std::string list = answer("AT+CMGL=4");
    EXPECT_EQ(list.find("+CMGL: 1,1,,"), 0U);
    EXPECT_NE(list.find("|+CMGL: 8,0,,"), std::string::npos);
    EXPECT_NE(list.find("|+CMGL: 262,1,,"), std::string::npos); // the second part of message 6
    EXPECT_EQ(answer("AT+CMGL=0"), "OK");                       // all are read now
}

TEST_F(AtMessages, AreDeleted)
{
    run("state unlocked");
    EXPECT_EQ(answer("AT+CMGD=3"), "OK");
    EXPECT_EQ(answer("AT+CMGD=3"), "+CMS ERROR: 321");
    EXPECT_EQ(answer("AT+CMGD=6;+CMGD=262"), "OK"); // further parts go with the first
    EXPECT_EQ(answer("AT+CPMS=\"SM\",\"SM\",\"SM\""), "+CPMS: 4,255,4,255,4,255|OK");
    EXPECT_EQ(answer("AT+CMGD=1,4"), "OK");
    EXPECT_EQ(answer("AT+CMGL=4"), "OK");
    EXPECT_EQ(answer("AT+CPMS=\"ME\""), "+CMS ERROR: 303");
}

TEST_F(AtMessages, ToTheOwnNumberArrive)
{
    register_modem();
    EXPECT_EQ(answer("AT+CMGS=18"), "> ");
    ASSERT_TRUE(port.takes_text());
    EXPECT_EQ(shown(port.run_text("0001000B912120550501F0000005E8329BFD06")), "+CMGS: 0|OK");
    EXPECT_FALSE(port.takes_text());
    EXPECT_EQ(answer("AT+CMGR=4").substr(0, 12), "+CMGR: 0,,24");
    answer("AT+CMGS=18");
    EXPECT_EQ(shown(port.give_up_text()), "OK");
    answer("AT+CMGS=5");
    EXPECT_EQ(shown(port.run_text("0001000B912120550501F0000005E8329BFD06")), "+CMS ERROR: 304");
}

TEST_F(AtMessages, AsText)
{
    register_modem();
    run("sms inject Bank 5 € are due");
    const std::pair<const char *, const char *> rows[] = {
        {"AT+CMGF=?", "+CMGF: (0,1)|OK"},
        {"AT+CMGF=1;+CMGF?", "+CMGF: 1|OK"},
        {"AT+CMGL=?", R"(+CMGL: ("REC UNREAD","REC READ","STO UNSENT","STO SENT","ALL")|OK)"},
        {"AT+CMGR=1",
         R"(+CMGR: "REC READ","Test Network",,"24/03/01,08:00:05+04"|Welcome to Test Network. Your number is +12025550100.|OK)"},
        {"AT+CMGR=4", R"(+CMGR: "REC UNREAD","Bank",,"24/03/06,12:00:00+04"|5 ? are due|OK)"},
        {"AT+CMGL=\"UNREAD\"", "+CMS ERROR: 303"},
        {"AT+CMGS", "ERROR"},
        {"AT+CMGS=", "+CMS ERROR: 305"},
        {"AT+CMGS=\"+12025550100\"", "> "},
    };
    for (const auto &[line, expected] : rows)
        EXPECT_EQ(answer(line), expected) << line;
    EXPECT_EQ(shown(port.run_text("To myself\nin two lines")), "+CMGS: 0|OK");
    EXPECT_EQ(answer("AT+CMGR=7"),
              "+CMGR: \"REC UNREAD\",\"+12025550100\",,\"24/03/06,12:00:00+04\""
              "|To myself|in two lines|OK");
    const std::string in_ucs2 = answer("AT+CSCS=\"UCS2\";+CMGR=4");
    EXPECT_NE(in_ucs2.find("|0035002020AC0020"), std::string::npos) << in_ucs2;
    EXPECT_EQ(answer("AT+CMGL=\"REC UNREAD\"").substr(0, 8), "+CMGL: 3");
    EXPECT_EQ(answer("AT+CMGL"), "OK"); // all are read now
}

} // namespace
