// The texts of a message on their way from the store into a record.
#include "tests/support/bytes.h"
#include "tests/support/mailbox.h"
#include "tests/support/memory_store.h"

#include <cstring>
#include <gtest/gtest.h>

namespace
{
// The body of message 1 as the store holds it, and as it arrives.
std::string body_of(const std::string &stored)
{
    Mailbox box;
    store::set("lte_mobile_sms_counts", "1");
    store::set("lte_mobile_sms_text_1", stored);
    read_messages(box);
    const char *text = box.messages[0].text;
    return {text, strnlen(text, sizeof box.messages[0].text)};
}
} // namespace

// Each text is cut to its field, with its NUL; the bytes after the NUL stay, the padding too.
TEST(MessageText, IsCutToItsField)
{
    store::set("lte_mobile_sms_counts", "1");
    for (const size_t size :
         {0U, 1U, 18U, 19U, 20U, 25U, 48U, 49U, 50U, 1022U, 1023U, 1024U, 2000U, 16383U}) {
        SCOPED_TRACE(size);
        const std::string text(size, 'x');
        for (const char *field : {"da", "scts", "text"})
            store::set(message_key(field, 1), text);
        Mailbox box;
        read_messages(box);
        cmif_sms_info expected;
        memset(&expected, Mailbox::noise, sizeof expected);
        expected.id = 0;
        expected.stat = 1;
        strcpy(expected.da, text.substr(0, 19).c_str());
        strcpy(expected.scts, text.substr(0, 49).c_str());
        strcpy(expected.text, text.substr(0, 1023).c_str());
        EXPECT_EQ(bytes_of(box.messages[0]), bytes_of(expected));
        EXPECT_TRUE(box.is_untouched(1));
    }
}

// Bodies come from strangers: nothing but "%%" means anything.
TEST(MessageText, IsLiteralExceptForDoublePercents)
{
    const std::pair<const char *, const char *> bodies[] = {
        {"100%% sure", "100% sure"},
        {"%", "%"},
        {"%%", "%"},
        {"%%%", "%%"},
        {"%%%%", "%%"},
        {"lone at the end %", "lone at the end %"},
        {"%n%n%n%s%s", "%n%n%n%s%s"},
        {"%d %x %p %f %c", "%d %x %p %f %c"},
        {"%1$s%99999999d%*d", "%1$s%99999999d%*d"},
        {"%%n%%s", "%n%s"},
        {"%5%", "%5%"},
        {"% %", "% %"},
        {"\\n\xC3\xA4\xE2\x82\xAC\x01\xFF\n", "\\n\xC3\xA4\xE2\x82\xAC\x01\xFF\n"},
    };
    for (const auto &[stored, body] : bodies)
        EXPECT_EQ(body_of(stored), body);
}

TEST(MessageText, ShrinksBeforeItIsCut)
{
    const std::string x(2000, 'x');
    EXPECT_EQ(body_of("%%" + x), "%" + x.substr(0, 1022));
    EXPECT_EQ(body_of(x.substr(0, 1022) + "%%yz"), x.substr(0, 1022) + "%");
    EXPECT_EQ(body_of(x.substr(0, 1023) + "%%"), x.substr(0, 1023));
    EXPECT_EQ(body_of(x.substr(0, 1022) + "%"), x.substr(0, 1022) + "%");
    EXPECT_EQ(body_of(std::string(4094, '%')), std::string(1023, '%'));
    EXPECT_EQ(body_of(std::string(2046, '%')), std::string(1023, '%'));
    EXPECT_EQ(body_of(std::string(2045, '%')), std::string(1023, '%'));
    EXPECT_EQ(body_of(std::string(2043, '%')), std::string(1022, '%'));
}

TEST(MessageText, ShrinksInEveryField)
{
    store::set("lte_mobile_sms_counts", "1");
    store::set("lte_mobile_sms_da_1", "%%1234567890123456789x%n");
    store::set("lte_mobile_sms_scts_1", "%s%%24/05/01");
    Mailbox box;
    read_messages(box);
    EXPECT_STREQ(box.messages[0].da, "%123456789012345678");
    EXPECT_STREQ(box.messages[0].scts, "%s%24/05/01");
}
