// The port for AT commands, over a pseudo-terminal, and the verbs that use it.
#include "modem_fixture.h"
#include "modems/modemmanager/at_commands.h"

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace
{

using daemons::PdpType;
using modem_manager::AtPort;

// Answers each command with the text that is set for it, a silent one with nothing.
class FakePort
{
public:
    FakePort() : master_(posix_openpt(O_RDWR | O_NOCTTY))
    {
        grantpt(master_);
        unlockpt(master_);
        path_ = ptsname(master_);
        local_state_ =
            open(path_.c_str(), O_RDWR | O_NOCTTY); // so that it outlives the first command
        thread_ = std::thread([this] { run(); });
    }
    ~FakePort()
    {
        ended_ = true;
        thread_.join();
        close(local_state_);
        close(master_);
    }
    FakePort(const FakePort &) = delete;
    FakePort &operator=(const FakePort &) = delete;

    const std::string &path() const { return path_; }
    void on(const std::string &command, const std::string &answer)
    {
        const std::lock_guard lock(mutex_);
        answers_[command] = answer;
    }
    std::vector<std::string> commands() const
    {
        const std::lock_guard lock(mutex_);
        return commands_;
    }
    bool got(const std::string &command) const
    {
        const auto all = commands();
        return std::find(all.begin(), all.end(), command) != all.end();
    }

private:
    std::string answer_to(const std::string &command)
    {
        const std::lock_guard lock(mutex_);
        commands_.push_back(command);
        const auto answer = answers_.find(command);
        return answer == answers_.end() ? "\r\nOK\r\n" : answer->second;
    }
    void run()
    {
        std::string command;
        while (!ended_) {
            pollfd file{master_, POLLIN, 0};
            char byte = 0;
            if (poll(&file, 1, 5) != 1 || read(master_, &byte, 1) != 1)
                continue;
            if (byte != '\r') {
                command += byte;
                continue;
            }
            const std::string text = answer_to(command);
            EXPECT_EQ(write(master_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
            command.clear();
        }
    }

    int master_, local_state_ = -1;
    std::string path_;
    mutable std::mutex mutex_; // of the two below
    std::map<std::string, std::string> answers_;
    std::vector<std::string> commands_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

TEST(AtPortTest, Answers)
{
    FakePort fake;
    const std::tuple<const char *, const char *, int, std::vector<std::string>> rows[] = {
        {"AT+A", "\r\nOK\r\n", 0, {}},
        {"AT+B?", "\r\n+B: 1,2\r\n\r\nOK\r\n", 0, {"+B: 1,2"}},
        {"AT+C?", "AT+C?\r\r\n+C: 1\r\n+C: 2\r\nOK\r\n", 0, {"+C: 1", "+C: 2"}}, // with an echo
        {"AT+D", "\r\n+CME ERROR: 16\r\n", 16, {}},
        {"AT+E", "\r\n+CME ERROR: 3\r\n", 203, {}},
        {"AT+F", "\r\n+CME ERROR: 9999\r\n", 100, {}},
        {"AT+G", "\r\n+CMS ERROR: 321\r\n", 21, {}},
        {"AT+H", "\r\nERROR\r\n", 100, {}},
        {"AT+I", "\r\n+CME ERROR: SIM busy\r\n", 100, {}},
    };
    for (const auto &[command, text, error, lines] : rows)
        fake.on(command, text);
    AtPort port(fake.path(), false);
    for (const auto &[command, text, error, lines] : rows) {
        const auto answer = port.send(std::string(command).substr(2));
        EXPECT_EQ(static_cast<int>(answer.error), error) << command;
        EXPECT_EQ(error == 0 ? answer.lines : std::vector<std::string>{}, lines) << command;
    }
}

TEST(AtPortTest, WithoutAPortOrAnAnswer)
{
    FakePort fake;
    fake.on("AT+SILENT", "");
    EXPECT_EQ(AtPort("", false).send("+A").error, CmeError::not_supported);
    EXPECT_EQ(AtPort("/dev/no-such-port", false).send("+A").error,
              CmeError::no_connection_to_phone);
    EXPECT_EQ(AtPort("/dev/null", false).send("+A").error, CmeError::no_connection_to_phone);
    EXPECT_EQ(AtPort(fake.path(), false).send("+SILENT", false, 20ms).error,
              CmeError::phone_failure);
}

TEST(AtPortTest, StopEndsACommand)
{
    FakePort fake;
    fake.on("AT+SILENT", "");
    AtPort port(fake.path(), false);
    std::thread command(
        [&] { EXPECT_EQ(port.send("+SILENT").error, CmeError::no_connection_to_phone); });
    EXPECT_TRUE(stand_in::eventually([&] { return fake.got("AT+SILENT"); }));
    port.stop();
    command.join();
    EXPECT_EQ(port.send("+A").error, CmeError::no_connection_to_phone);
    EXPECT_FALSE(fake.got("AT+A"));
}

TEST(AtPortTest, Commands)
{
    using namespace modem_manager;
    EXPECT_EQ(set_packet_domain_command(true), "+CGATT=1");
    EXPECT_EQ(set_profile_command(3, {PdpType::ppp, "some.example"}),
              "+CGDCONT=3,\"PPP\",\"some.example\"");
    EXPECT_EQ(lock_network_command("11223344"), "+CLCK=\"PN\",1,\"11223344\"");
    EXPECT_EQ(unlock_network_command("Example Ltd", "1122"), "+CLCK=\"PN\",0,\"1122\"");
    EXPECT_EQ(unlock_network_command("ZTE INCORPORATED", "1122"), "+ZNCK=\"1122\"");
    EXPECT_EQ(set_clock_command(1'709'726'400, 4), "+CCLK=\"24/03/06,13:00:00+04\"");
    EXPECT_EQ(set_clock_command(1'709'726'400, -14), "+CCLK=\"24/03/06,08:30:00-14\"");
    EXPECT_TRUE(is_apn("internet.example-1"));
    EXPECT_FALSE(is_apn("a\"\rAT+CFUN=0"));
    EXPECT_FALSE(is_control_key(""));
    EXPECT_FALSE(is_control_key("1122\r"));
}

class AtPortVerbsTest : public ModemTest
{
protected:
    void SetUp() override
    {
        add_registered();
        manager->remove(stand_in::modem_path, "ProfileManager");
        manager->set(stand_in::modem_path, "Modem3gpp", "{'PacketServiceState': <uint32 0>}");
        for (const char *method : {"SetPacketServiceState", "DisableFacilityLock"})
            manager->on(std::string("Modem3gpp.") + method,
                        {"org.freedesktop.ModemManager1.Error.Core.Unsupported"});
        modem_manager::Options options;
        options.at_port = port.path();
        start(options);
        ASSERT_TRUE(comes(SimStatus::ready));
    }

    FakePort port;
};

TEST_F(AtPortVerbsTest, FillTheGaps)
{
    port.on("AT+CGATT?", "\r\n+CGATT: 1\r\n\r\nOK\r\n");
    port.on("AT+CGDCONT?", "\r\n+CGDCONT: 1,\"IP\",\"ims\",\"\",0,0\r\n"
                           "+CGDCONT: 3,\"IPV4V6\",\"managed.example\",\"\",0,0\r\n\r\nOK\r\n");
    EXPECT_EQ(status().packet_domain, std::nullopt);
    EXPECT_EQ(modem->refresh(daemons::StatusPart::packet_domain), CmeError::ok);
    EXPECT_EQ(status().packet_domain, true);
    EXPECT_EQ(modem->set_packet_domain(false), CmeError::ok);
    EXPECT_TRUE(port.got("AT+CGATT=0"));
    EXPECT_EQ(status().packet_domain, false);
    EXPECT_EQ(modem->set_profile(3, {PdpType::ppp, "some.example"}), CmeError::ok);
    EXPECT_TRUE(port.got("AT+CGDCONT=3,\"PPP\",\"some.example\""));
    EXPECT_EQ(modem->synchronize_profile(), CmeError::ok);
    EXPECT_EQ(status().pdp_apn, "managed.example");
    EXPECT_EQ(modem->lock_network("00101", "11223344"), CmeError::ok);
    EXPECT_TRUE(port.got("AT+CLCK=\"PN\",1,\"11223344\""));
    EXPECT_EQ(modem->set_time_zone(4), CmeError::ok);
    EXPECT_TRUE(port.got("AT+CTZU=0"));
}

TEST_F(AtPortVerbsTest, AWrongKeyIsTheModemsAnswer)
{
    port.on("AT+CLCK=\"PN\",0,\"99999999\"", "\r\n+CME ERROR: 16\r\n");
    EXPECT_EQ(modem->unlock_network("99999999"), CmeError::incorrect_password);
}

} // namespace
