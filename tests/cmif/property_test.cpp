// Readers of foreign text against simple second implementations, over a thousand random texts each.
#include "cmif/cmif.h"
#include "tests/cmif/reference/message_copy.h"
#include "tests/cmif/reference/provider_list.h"
#include "tests/support/at_request.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_store.h"
#include "tests/support/provider_list_run.h"
#include "tests/support/queue_pair.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace
{
constexpr int rounds = 1000; // as many as an emulated processor does in some seconds

// Texts of pieces that matter to the reader; the same on every run.
class RandomText
{
public:
    explicit RandomText(std::vector<std::string> pieces) : pieces_(std::move(pieces)) {}

    std::string operator()(size_t max_pieces)
    {
        std::string text;
        for (size_t count = random_() % (max_pieces + 1); count > 0; --count)
            text += pieces_[random_() % pieces_.size()];
        return text;
    }

private:
    std::vector<std::string> pieces_;
    std::mt19937 random_{20240501}; // NOLINT(cert-msc32-c,cert-msc51-cpp): repeatable
};

std::vector<std::string> list_pieces()
{
    std::vector<std::string> pieces{
        "(",        "(",  ")",  ")", ",",  ",",        ",",
        "\"",       "\"", "1",  "2", "A",  "Operator", "26201",
        "12345678", " ",  "\n", "-", "%n", "()",       R"((2,"One","O1","00101",7))"};
    pieces.push_back("\"" + std::string(20, 'q') + "\"");
    pieces.emplace_back(40, 'w');
    return pieces;
}

void expect_same_list(const std::string &file)
{
    SCOPED_TRACE(file);
    ProviderListRun expected;
    expected.run.output = reference::provider_list(file, expected.list.data());
    const ProviderListRun found = read_provider_list(file);
    ASSERT_EQ(found.run.result, 0);
    ASSERT_EQ(found.run.output, expected.run.output);
    ASSERT_EQ(bytes_of(found.list), bytes_of(expected.list));
}
} // namespace

TEST(Properties, TheProviderListIsReadAsTheReferenceReadsIt)
{
    RandomText random(list_pieces());
    for (int round = 0; round < rounds && !HasFatalFailure(); ++round)
        expect_same_list(random(round % 8 == 0 ? 400 : 30));
}

TEST(Properties, TheProviderListEndsAtAZeroAsTheReferenceDoes)
{
    std::vector<std::string> pieces = list_pieces();
    pieces.emplace_back(1, '\0');
    RandomText random(pieces);
    for (int round = 0; round < rounds / 4 && !HasFatalFailure(); ++round)
        expect_same_list(random(60));
}

TEST(Properties, SymbolFilterCopiesWhatTheReferenceCopies)
{
    RandomText random({"\"", "\"", "a", "bc", ",", "()", " ", std::string(50, 'x')});
    for (int round = 0; round < rounds; ++round) {
        const std::string source = random(12);
        SCOPED_TRACE(source);
        std::string out(source.size() + 8, '?');
        const int result = symbol_filter(source.c_str(), out.data());
        const reference::Filtered expected = reference::symbol_filter(source);
        ASSERT_EQ(result, expected.result);
        ASSERT_EQ(out, expected.copied + std::string(out.size() - expected.copied.size(), '?'));
    }
}

TEST(Properties, MessagesAreCopiedAsTheReferenceCopiesThem)
{
    RandomText random({"%", "%", "%%", "n", "s", "d", "REC", "%n", "%s", "1", "\n", "\xC3\xA4",
                       std::string(18, '%'), std::string(17, 'x'), std::string(250, 'y')});
    const QueuePair queues = QueuePair::at();
    store::set("lte_mobile_sms_counts", "1");
    for (int round = 0; round < rounds; ++round) {
        const reference::StoredMessage message{random(2), round % 3 == 0 ? "REC UNREAD" : random(2),
                                               random(10), random(10), random(30)};
        store::set("lte_mobile_sms_id_1", message.id);
        store::set("lte_mobile_sms_stat_1", message.stat);
        store::set("lte_mobile_sms_da_1", message.da);
        store::set("lte_mobile_sms_scts_1", message.scts);
        store::set("lte_mobile_sms_text_1", message.text);
        cmif_sms_info found[2];
        memset(found, '?', sizeof found);
        cmif_sms_info expected[2];
        memset(expected, '?', sizeof expected);
        reference::fill_message(expected[0], message);
        int count = 0;
        int unreads = 0;
        queues.reply(18, at_reply(0));
        ASSERT_EQ(shared_CMIF_get_mobileSMSInfo(found, &count, &unreads), 0);
        ASSERT_TRUE(queues.take_request().has_value());
        ASSERT_EQ(bytes_of(found), bytes_of(expected));
    }
}
