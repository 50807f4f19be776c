// What is recorded of records and settings, and what the recorded program notices of it: nothing.
#include "recording_fixture.h"

#include <cerrno>
#include <fcntl.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>

namespace
{

class Recording : public RecordingFixture
{
};

TEST_F(Recording, BeginsWithFormatAndVersion)
{
    start();
    const auto head = lines().front();
    EXPECT_EQ(head["format"], "cmif-record");
    EXPECT_EQ(head["version"], 1);
    EXPECT_TRUE(std::string(head["started"]).ends_with("Z"));
}

TEST_F(Recording, IsForItsOwnerAlone)
{
    start();
    EXPECT_EQ(std::filesystem::status(file()).permissions(), std::filesystem::perms(0600));
}

TEST_F(Recording, DecodesAtRecords)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 17, at({"00101", "7", "", ""})), 0);
    ASSERT_EQ(receive(CMIF_AT_REQUEST_KEY), CMIF_AT_PAYLOAD);
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 17, at({"", "", "", ""}, 30)), 0);
    const auto found = events();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], Json::parse(R"({"type":"request","channel":"at","action":"sent","code":17,
        "name":"shared_CMIF_SetNetworkProvider","size":116,
        "fields":{"numeric":"00101","technology":"7"}})"));
    EXPECT_EQ(found[1]["action"], "received");
    EXPECT_EQ(found[1]["fields"], found[0]["fields"]);
    EXPECT_EQ(found[2], Json::parse(R"({"type":"reply","channel":"at","action":"sent","code":17,
        "name":"shared_CMIF_SetNetworkProvider","size":116,
        "fields":{"ret_code":30,"result":"no_network_service"}})"));
}

TEST_F(Recording, DecodesNumbersAndUnknownCodes)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 22, at({"\x07", "", "", ""})), 0);
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 5, at({"", "", "", ""}, 4711)), 0);
    const auto found = events();
    EXPECT_EQ(found[0]["fields"], Json::parse(R"({"level":7})"));
    EXPECT_FALSE(found[0].contains("payload"));
    EXPECT_EQ(found[1]["name"], nullptr);
    EXPECT_EQ(found[1]["fields"], Json::parse(R"({"ret_code":4711,"result":null})"));
}

TEST_F(Recording, DecodesQmiRecords)
{
    start(true);
    ASSERT_EQ(send(CMIF_QMI_REQUEST_KEY, 3, profile("me", "pw")), 0);
    ASSERT_EQ(send(CMIF_QMI_REQUEST_KEY, 6, std::string(5, '\0')), 0);
    ASSERT_EQ(send(CMIF_QMI_REPLY_KEY, 6, std::string("\3\0\0\0", 4)), 0);
    ASSERT_EQ(send(CMIF_QMI_REPLY_KEY, 1, std::string("FW_1\0\0", 6)), 0);
    ASSERT_EQ(send(CMIF_QMI_REPLY_KEY, 4, std::string("\x1E\0\0\0", 4)), 0);
    const auto found = events();
    EXPECT_EQ(found[0]["fields"], Json::parse(R"({"apn":"apn","user":"me","password":"pw",
        "auth":1,"pdp":1,"family":1})"));
    EXPECT_EQ(found[1]["fields"], Json::object());
    EXPECT_EQ(found[2]["fields"], Json::parse(R"({"status":3})"));
    EXPECT_EQ(found[3]["fields"], Json::parse(R"({"text":"FW_1"})"));
    EXPECT_EQ(found[3]["size"], 6);
    EXPECT_EQ(found[4]["fields"], Json::parse(R"({"number":30})"));
    for (const auto &line : found)
        EXPECT_FALSE(line.contains("payload")) << line;
}

TEST_F(Recording, AddsThePayloadThatTheFieldsDoNotDescribe)
{
    start(true);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 4, "\1\2"), 0);
    std::string reply = at({"x", "", "", ""}, 16);
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 4, reply), 0);
    const auto found = events();
    EXPECT_EQ(found[0]["payload"], "0102");
    EXPECT_EQ(found[0]["size"], 2);
    EXPECT_EQ(std::string(found[1]["payload"]).substr(0, 4), "7800");
    EXPECT_TRUE(std::string(found[1]["payload"]).ends_with("10000000"));
    EXPECT_EQ(found[1]["fields"]["ret_code"], 16);
}

TEST_F(Recording, FollowsQueuesThatAreMadeAgain)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 4, at({})), 0);
    msgctl(queue(CMIF_AT_REQUEST_KEY), IPC_RMID, nullptr);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 6, at({})), 0);
    const auto found = events();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1]["code"], 6);
}

// As with a queue that a parent looked up before the recording began.
TEST_F(Recording, KnowsAQueueByItsIdAlone)
{
    const int id = static_cast<int>(syscall(SYS_msgget, CMIF_QMI_REPLY_KEY, IPC_CREAT | 0600));
    start();
    qmi_msg record{CMIF_QMI_START, {}};
    ASSERT_EQ(msgsnd(id, &record, 4, 0), 0);
    ASSERT_EQ(events().size(), 1U);
    EXPECT_EQ(events()[0]["channel"], "qmi");
}

TEST_F(Recording, IgnoresOtherQueuesAndFailedReceives)
{
    start();
    ASSERT_EQ(send(4242, 4, "text"), 0);
    ASSERT_EQ(receive(4242), 4);
    ASSERT_EQ(receive(CMIF_AT_REPLY_KEY), -1);
    EXPECT_EQ(events().size(), 0U);
}

// A record that is only looked at stays where it is.
TEST_F(Recording, DoesNotCountAPeek)
{
    start();
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), 0);
    char record[sizeof(long) + 1024];
    ASSERT_EQ(msgrcv(queue(CMIF_AT_REPLY_KEY), record, 1024, 0, MSG_COPY | IPC_NOWAIT), 116);
    EXPECT_EQ(events().size(), 1U);
}

TEST_F(Recording, HasValuesThatAreSetAndThoseThatFail)
{
    start();
    ASSERT_EQ(set("lte_sim_status", "READY"), 0);
    ASSERT_EQ(tarnNvramConfig_set("", "x"), -1);
    const auto found = events();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0], Json::parse(R"({"type":"set","key":"lte_sim_status","value":"READY"})"));
    EXPECT_EQ(found[2], Json::parse(R"({"type":"failed"})"));
    EXPECT_EQ(get("lte_sim_status"), "READY");
}

TEST_F(Recording, HasAFullQueueOnce)
{
    start();
    while (send(CMIF_AT_REPLY_KEY, 4, at({})) == 0)
        continue;
    EXPECT_EQ(errno, EAGAIN);
    msqid_ds state{};
    msgctl(queue(CMIF_AT_REPLY_KEY), IPC_STAT, &state);
    EXPECT_EQ(events().size(), state.msg_qnum + 2);
    EXPECT_EQ(events().back()["type"], "failed");
    EXPECT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), -1);
    EXPECT_EQ(events().size(), state.msg_qnum + 2);
    EXPECT_EQ(receive(CMIF_AT_REPLY_KEY), CMIF_AT_PAYLOAD);
    EXPECT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), 0);
    EXPECT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), -1);
    EXPECT_EQ(events().size(), state.msg_qnum + 2 + 2 + 2);
}

TEST_F(Recording, HasTheProviderListBeforeTheReplyToASearch)
{
    start();
    write(CMIF_PROVIDER_LIST_FILE, "+COPS: (2,\"One\")\n");
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 24, at({})), 0);
    std::filesystem::remove(CMIF_PROVIDER_LIST_FILE);
    const auto found = events();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0]["type"], "file");
    EXPECT_EQ(found[0]["path"], "/tmp/lte_provider_list");
    EXPECT_EQ(found[0]["text"], "+COPS: (2,\"One\")\n");
}

TEST_F(Recording, KeepsErrno)
{
    start();
    errno = 77;
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), 0);
    ASSERT_EQ(receive(CMIF_AT_REPLY_KEY), CMIF_AT_PAYLOAD);
    EXPECT_EQ(errno, 77);
    EXPECT_EQ(receive(CMIF_AT_REPLY_KEY), -1);
    EXPECT_EQ(errno, ENOMSG);
}

TEST_F(Recording, SurvivesTheClosingOfItsFile)
{
    start();
    for (int file = 3; file < 1024; ++file)
        close(file);
    const int own = open((top() / "own").c_str(), O_CREAT | O_WRONLY, 0600);
    ASSERT_EQ(dup2(own, 200), 200); // where the recording was
    ASSERT_EQ(send(CMIF_AT_REPLY_KEY, 4, at({})), 0);
    EXPECT_EQ(events().size(), 1U);
    EXPECT_EQ(read(top() / "own"), "");
}

TEST_F(Recording, GoesOnInAChild)
{
    start();
    const pid_t child = fork();
    if (child == 0)
        _exit(send(CMIF_AT_REPLY_KEY, 4, at({})) == 0 ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[1]["process"], child);
}

// Four threads: every line is whole.
TEST_F(Recording, IsSharedByThreads)
{
    constexpr int count = 250;
    start();
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([number] {
            for (int i = 0; i < count; ++i) {
                while (send(CMIF_AT_REQUEST_KEY, 11 + number, at({"12345678"})) != 0)
                    std::this_thread::yield();
                while (receive(CMIF_AT_REQUEST_KEY, 11 + number) < 0)
                    std::this_thread::yield();
            }
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(events().size(), 2U * 4 * count);
}

// A thread can be cancelled while it waits for a record.
TEST_F(Recording, LetsThreadsBeCancelled)
{
    start();
    queue(CMIF_AT_REQUEST_KEY);
    pthread_t thread{};
    const auto wait = [](void *) -> void * {
        char record[sizeof(long) + 1024];
        msgrcv(queue(CMIF_AT_REQUEST_KEY), record, 1024, 0, 0);
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, nullptr, wait, nullptr), 0);
    usleep(50'000);
    pthread_cancel(thread);
    void *result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    ASSERT_EQ(send(CMIF_AT_REQUEST_KEY, 4, at({})), 0);
    EXPECT_EQ(events().size(), 1U);
}

} // namespace
