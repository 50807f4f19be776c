// A recording is read as it was written, and refused with its place where it is wrong.
#include "cmif-record/reader.h"
#include "recording_fixture.h"

namespace
{

using cmif_record::Channel;
using cmif_record::Event;
using cmif_record::read_recording;

constexpr const char *head =
    R"({"format":"cmif-record","version":1,"started":"2026-01-01T00:00:00.000Z","secrets":"kept"})"
    "\n";

class Reader : public RecordingFixture
{
protected:
    std::string error_of(const std::string &text) const
    {
        write(file(), text);
        try {
            read_recording(file());
            return "none";
        } catch (const cmif_record::RecordingError &error) {
            return error.what();
        }
    }
};

TEST_F(Reader, ReadsWhatTheDaemonDidAndNotItsCallers)
{
    start(true);
    ASSERT_EQ(set("lte_sim_status", "READY"), 0);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 12, at({"1234"})), 0); // the caller
    ASSERT_EQ(receive(CMIF_AT_REQUEST_KEY), CMIF_AT_PAYLOAD);
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 12, at({}, 16)), 0);
    ASSERT_EQ(receive(CMIF_AT_REPLY_KEY), CMIF_AT_PAYLOAD); // the caller
    const auto contents = read_recording(recorded());
    EXPECT_FALSE(contents.secrets_replaced);
    ASSERT_EQ(contents.events.size(), 3U);
    EXPECT_EQ(contents.events[0].type, Event::Type::setting);
    EXPECT_EQ(contents.events[0].name, "lte_sim_status");
    EXPECT_EQ(contents.events[0].value, "READY");
    EXPECT_EQ(contents.events[1].type, Event::Type::request);
    EXPECT_EQ(contents.events[1].fields.at("pin"), "\"1234\"");
    EXPECT_EQ(contents.events[2].type, Event::Type::reply);
    EXPECT_GE(contents.events[2].time, contents.events[0].time);
}

// Whatever a reply looks like, its bytes come back.
TEST_F(Reader, RestoresRepliesByteForByte)
{
    const std::string at_replies[] = {at({}, 0),           at({}, -1),           at({"text"}, 7),
                                      at({}) + "more",     std::string("short"), std::string(),
                                      std::string(1, '\0')};
    const std::string qmi_replies[] = {std::string("FW\0\0\0", 5),
                                       std::string("\3\0\0\0", 4),
                                       std::string("\3\0\0\0\0\0", 6),
                                       std::string("\xFF\xFF\xFF\xFF", 4),
                                       std::string("abcd"),
                                       std::string(312, 'x'),
                                       std::string("a\0b", 3),
                                       std::string(),
                                       std::string("\xFC\0", 2)};
    start(true);
    std::vector<std::string> sent;
    for (const std::string &reply : at_replies) {
        ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 4, reply), 0);
        sent.push_back(reply);
    }
    for (const long code : {1, 3, 6, 8, 50})
        for (const std::string &reply : qmi_replies) {
            ASSERT_EQ(send(CMIF_QMI_REPLY_KEY, code, reply), 0);
            ASSERT_EQ(receive(CMIF_QMI_REPLY_KEY), static_cast<ssize_t>(reply.size()));
            sent.push_back(reply);
        }
    std::vector<std::string> found;
    for (const Event &event : read_recording(recorded()).events)
        found.push_back(event.payload);
    EXPECT_EQ(found, sent);
}

// A replay compares it.
TEST_F(Reader, HasThePayloadOfARequestThatTheFieldsDoNotDescribe)
{
    start(true);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 4, "\1\2"), 0);
    ASSERT_EQ(receive(CMIF_AT_REQUEST_KEY), 2);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 4, at({})), 0);
    ASSERT_EQ(receive(CMIF_AT_REQUEST_KEY), CMIF_AT_PAYLOAD);
    const auto events = read_recording(recorded()).events;
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].fields.at("payload"), "\"0102\"");
    EXPECT_EQ(events[1].fields.size(), 0U);
}

TEST_F(Reader, RemovesWhatFailed)
{
    const std::string thread = R"({"time":0,"process":1,"thread":)";
    write(file(), head + thread +
                      R"(1,"type":"set","key":"a","value":"1"})"
                      "\n" +
                      thread +
                      R"(2,"type":"set","key":"b","value":"2"})"
                      "\n" +
                      thread +
                      R"(1,"type":"failed"})"
                      "\n" +
                      thread +
                      R"(1,"type":"failed"})"
                      "\n");
    const auto events = read_recording(file()).events;
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].name, "b");
}

TEST_F(Reader, NamesThePlaceOfAnError)
{
    const std::string line = R"({"time":0.5,"process":1,"thread":1,"type":)";
    const std::pair<std::string, const char *> errors[] = {
        {"", ": empty"},
        {"x\n", ":1: not valid JSON at column 1"},
        {"[]\n", ":1: not a JSON object"},
        {"{}\n", ":1: no member 'format'"},
        {R"({"format":"other"})", ":1: not a recording of cmif-record"},
        {R"({"format":"cmif-record","version":2})",
         ":1: format version 2; this program reads version 1"},
        {R"({"format":"cmif-record","version":1,"secrets":"some"})",
         ":1: 'secrets' is 'some', not one of: replaced, kept"},
        {head + line + "\"set\"", ":2: not valid JSON at column 48"},
        {head + line + "\"sett\"}",
         ":2: 'type' is 'sett', not one of: process, request, reply, set, file, failed, lost"},
        {head + line + "\"set\"}", ":2: no member 'key'"},
        {head + line + R"("set","key":7})", ":2: 'key' is not a text"},
        {head + line + R"("set","key":{"hex":"0g"}})", ":2: '0g' is not a number of bytes in hex"},
        {head + line + R"("file","path":"/etc/passwd","text":""})",
         ":2: 'path' is '/etc/passwd', not /tmp/lte_provider_list"},
        {head + line + R"("request","channel":"ip"})",
         ":2: 'channel' is 'ip', not one of: at, qmi"},
        {head + line + R"("request","channel":"at","code":"x"})",
         ":2: 'code' is not a whole number from -2147483647 to 2147483647"},
        {head + line + R"("reply","channel":"at","code":4,"action":"sent","size":9999999})",
         ":2: 'size' is not a whole number from 0 to 8192"},
        {head + line +
             R"("reply","channel":"at","code":4,"action":"sent","size":5,"fields":{"ret_code":0}})",
         ":2: 'size' is smaller than the record"},
        {head + std::string(R"({"time":-1,"thread":1,"type":"set"})"),
         ":2: 'time' is not a number of seconds"},
        {head + std::string(R"({"time":1e400,"thread":1,"type":"set"})"),
         ":2: not valid JSON: a number is too large"},
        {head + std::string(std::size_t{1024} * 1024 + 1, ' '), ":2: longer than 1 MiB"},
    };
    for (const auto &[text, error] : errors)
        EXPECT_EQ(error_of(text), file() + error) << text;
    std::filesystem::remove(file());
    EXPECT_THROW(read_recording(file()), cmif_record::RecordingError);
    EXPECT_THROW(read_recording("/dev/zero"), cmif_record::RecordingError); // it has no end
}

} // namespace
