// The program cmifd: its queues, its keys, and what it says when something is missing.
#include "cmif/cmif.h"
#include "tests/modems/modemmanager/modem_fixture.h"
#include "tests/support/store_directory.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr const char *errors_path = "/tmp/cmifd-errors.txt";
constexpr const char *output_path = "/tmp/cmifd-output.txt";

// A running cmifd.
class Program
{
public:
    Program(const std::string &bus, std::vector<std::string> words)
    {
        setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.c_str(), 1);
        std::vector<char *> all{const_cast<char *>("cmifd")};
        for (std::string &word : words)
            all.push_back(word.data());
        all.push_back(nullptr);
        posix_spawn_file_actions_t files;
        posix_spawn_file_actions_init(&files);
        for (const auto &[file, path] :
             {std::pair{STDERR_FILENO, errors_path}, {STDOUT_FILENO, output_path}})
            posix_spawn_file_actions_addopen(&files, file, path, O_CREAT | O_WRONLY | O_TRUNC,
                                             0600);
        EXPECT_EQ(posix_spawn(&process_, CMIFD, &files, nullptr, all.data(), environ), 0);
        posix_spawn_file_actions_destroy(&files);
    }
    ~Program() { end(); }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    // Its exit status.
    int wait()
    {
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    int end()
    {
        if (process_ <= 0)
            return -1;
        kill(process_, SIGTERM);
        return wait();
    }

private:
    pid_t process_ = -1;
};

int ask(long code, const std::string &text = "")
{
    cmif_msg record{};
    record.mod_id = code;
    std::memcpy(record.set_string, text.data(), text.size());
    EXPECT_EQ(msgsnd(msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666), &record, CMIF_AT_PAYLOAD, 0),
              0);
    const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
    EXPECT_EQ(msgrcv(replies, &record, CMIF_AT_PAYLOAD, code, 0), CMIF_AT_PAYLOAD);
    return record.ret_code;
}

class CmifdTest : public ModemTest
{
protected:
    CmifdTest() { setenv("CMIF_STORE", "/tmp/cmifd-store", 1); }

    static std::string read(const char *path)
    {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    static bool reads(const char *key, const std::string &expected)
    {
        return stand_in::eventually([&] { return tarnNvramConfig_get(key) == expected; });
    }
    static bool is_ready()
    {
        return stand_in::eventually([] { return std::filesystem::exists(CMIF_QMI_READY_FILE); });
    }
};

TEST_F(CmifdTest, ServesTheQueuesAndPublishesTheKeys)
{
    add_locked();
    manager->on("Sim.SendPin", [this](const stand_in::Value &) {
        unlock();
        return stand_in::Answer{};
    });
    Program program(bus.address(), {"--first", "--verbose"});
    ASSERT_TRUE(is_ready());
    EXPECT_TRUE(reads("lte_sim_status", "SIM PIN"));
    EXPECT_TRUE(reads("lte_module_hw_ver", "LTE stick"));
    EXPECT_TRUE(reads("lte_mobile_pin1c", "3"));
    EXPECT_TRUE(reads("lte_sim_pin_mode", "1"));
    EXPECT_TRUE(reads("lte_network_reg_status_state", ""));
    EXPECT_EQ(ask(CMIF_AT_GET_PIN_COUNTERS), 0);
    EXPECT_EQ(ask(CMIF_AT_ENTER_PIN, "9182"), 0);
    EXPECT_STREQ(tarnNvramConfig_get("lte_sim_status"), "READY");
    EXPECT_STREQ(tarnNvramConfig_get("lte_mobile_imsi"), "001010123456789");
    enable();
    register_home();
    EXPECT_TRUE(reads("lte_operator_select_operator_longname", "Test Network"));
    EXPECT_TRUE(reads("lte_network_reg_status_state", "1"));
    EXPECT_EQ(ask(CMIF_AT_SET_TIME_ZONE), static_cast<int>(CmeError::not_supported));
    manager->remove(stand_in::modem_path);
    EXPECT_TRUE(reads("lte_sim_status", ""));
    EXPECT_EQ(program.end(), 0);
    EXPECT_FALSE(std::filesystem::exists(CMIF_QMI_READY_FILE));
    const std::string log = read(errors_path);
    EXPECT_NE(log.find("Sim.SendPin (*)"), std::string::npos) << log;
    EXPECT_EQ(log.find("9182"), std::string::npos) << log;
}

TEST_F(CmifdTest, RefusesToServeBesideAnother)
{
    Program first(bus.address(), {"--first"});
    ASSERT_TRUE(is_ready());
    Program second(bus.address(), {"--first"});
    EXPECT_EQ(second.wait(), 1);
    EXPECT_NE(read(errors_path).find("already served"), std::string::npos) << read(errors_path);
    EXPECT_EQ(first.end(), 0);
}

TEST_F(CmifdTest, ReportsWhatIsMissing)
{
    Program(bus.address(), {"--first", "--probe"}).wait();
    EXPECT_NE(read(errors_path).find("ModemManager has no modem\n"), std::string::npos);
    EXPECT_EQ(Program(bus.address(), {"--device", "/sys/x", "--probe"}).wait(), 1);
    EXPECT_NE(read(errors_path).find("no modem at /sys/x"), std::string::npos);
    EXPECT_EQ(read(errors_path).find("serve"), std::string::npos); // a probe has ended
    Program server(bus.address(), {"--first"});
    ASSERT_TRUE(is_ready());
    EXPECT_EQ(server.end(), 0);
    EXPECT_NE(read(errors_path).find("serve without a modem"), std::string::npos);
    manager.reset();
    EXPECT_EQ(Program(bus.address(), {"--first", "--probe"}).wait(), 1);
    EXPECT_NE(read(errors_path).find("no ModemManager on the bus"), std::string::npos);
    bus.end();
    EXPECT_EQ(Program(bus.address(), {"--first"}).wait(), 1);
    EXPECT_NE(read(errors_path).find("no D-Bus system bus"), std::string::npos);
}

TEST_F(CmifdTest, ReportsThatTheUserHasNoPermission)
{
    manager->on("ObjectManager.GetManagedObjects", {"org.freedesktop.DBus.Error.AccessDenied"});
    EXPECT_EQ(Program(bus.address(), {"--first", "--probe"}).wait(), 1);
    EXPECT_NE(read(errors_path).find("refuses this user\n  Run as root, or put cmifd.conf"),
              std::string::npos)
        << read(errors_path);
}

TEST_F(CmifdTest, Probes)
{
    add_registered();
    EXPECT_EQ(Program(bus.address(), {"--first", "--probe"}).wait(), 0);
    const std::string text = read(output_path);
    for (const char *line :
         {"model          LTE stick\n", "device         /sys/devices/usb1/1-1\n",
          "AT   1  time zone                      no  ModemManager has no way; give --at-port\n",
          "AT   2  search mode, band region       yes\n",
          "AT  26  device-management session      no  ",
          "QMI  4  start                          yes\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
    EXPECT_EQ(Program(bus.address(), {"--first", "--probe", "--at-port", "/dev/null"}).wait(), 0);
    EXPECT_NE(read(output_path).find("time zone                      by AT\n"), std::string::npos);
}

TEST_F(CmifdTest, CommandLines)
{
    const struct {
        std::vector<std::string> words;
        int status;
        const char *errors;
    } rows[] = {
        {{}, 2, "cmifd"},
        {{"--verbose"}, 2, "no modem is given"},
        {{"--verbose"}, 2, "Give --device or --first"},
        {{"--first", "--device", "/sys/x"}, 2, "--device"},
        {{"--first", "--secret"}, 2, "--secret"},
        {{"--help"}, 0, ""},
        {{"manual"}, 0, ""},
        {{"completion", "bash"}, 0, ""},
    };
    for (const auto &[words, status, errors] : rows) {
        EXPECT_EQ(Program(bus.address(), words).wait(), status) << testing::PrintToString(words);
        EXPECT_NE(read(errors_path).find(errors), std::string::npos) << read(errors_path);
    }
}

} // namespace
