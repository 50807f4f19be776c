// The modem's ports as programs see them: pseudo-terminals, or sockets.
#include "modems/at_front/front.h"
#include "modems/at_front/socket.h"
#include "modems/at_front/terminal.h"
#include "modems/simulated/commands.h"
#include "scenario/real_clock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <termios.h>
#include <unistd.h>

namespace
{

// A program's end of a port.
class Line
{
public:
    explicit Line(const std::string &path) : file_(open(path.c_str(), O_RDWR | O_NOCTTY)) {}
    explicit Line(int file) : file_(file) {}
    ~Line() { close(file_); }
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    bool is_open() const { return file_ != -1; }
    int file() const { return file_; }
    void send(const std::string &text) const
    {
        for (const char c : text) // as some programs do
            ASSERT_EQ(write(file_, &c, 1), 1);
    }
    // What comes up to and with `end`.
    std::string receive(const std::string &end) const
    {
        constexpr int patience = 20'000; // milliseconds
        std::string text;
        pollfd readable{file_, POLLIN, 0};
        char c = 0;
        while (!text.ends_with(end) && poll(&readable, 1, patience) == 1 && read(file_, &c, 1) == 1)
            text += c;
        return text;
    }
    std::string ask(const std::string &line) const
    {
        send(line + "\r");
        return receive("\r\n");
    }

private:
    int file_;
};

class AtPorts : public testing::Test
{
protected:
    void run(std::string_view line)
    {
        scenario::Words words(line);
        scenario::parse_command(simulated::modem_commands(modem), words)();
    }

    scenario::RealClock clock{scenario::TimeScale(0)};
    simulated::Modem modem{clock, 1};
    at_front::AnswerFaults answer_faults;
    at_front::Front front{modem, answer_faults, at_front::terminals(2)};
    Line primary{front.paths().at(0)}, secondary{front.paths().at(1)};
};

TEST_F(AtPorts, EchoAndAnswer)
{
    primary.send("AT\r");
    EXPECT_EQ(primary.receive("OK\r\n"), "AT\r\r\nOK\r\n");
    primary.send("ATE0\r");
    EXPECT_EQ(primary.receive("OK\r\n"), "ATE0\r\r\nOK\r\n");
    primary.send("AT+CGMM\r\n");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\nCMIF-SIM LTE R1\r\n\r\nOK\r\n");
    secondary.send("AT\r");
    EXPECT_EQ(secondary.receive("OK\r\n"), "AT\r\r\nOK\r\n"); // each has its own settings
}

TEST_F(AtPorts, TakeBackCharacters)
{
    primary.send("ATE0\r");
    primary.receive("OK\r\n");
    primary.send("AT+CX\bGMM\r");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\nCMIF-SIM LTE R1\r\n\r\nOK\r\n");
}

TEST_F(AtPorts, ReportToEachPortThatAsked)
{
    secondary.send("ATE0+CREG=1\r");
    secondary.receive("OK\r\n");
    run("state registered");
    EXPECT_EQ(secondary.receive("1\r\n"), "\r\n+CREG: 1\r\n");
    pollfd silent{primary.file(), POLLIN, 0};
    EXPECT_EQ(poll(&silent, 1, 0), 0);
}

TEST_F(AtPorts, TakeMessages)
{
    run("state registered");
    primary.send("ATE0\r");
    primary.receive("OK\r\n");
    primary.send("AT+CMGS=18\r");
    EXPECT_EQ(primary.receive("> "), "\r\n> ");
    primary.send("0001000B912120550501F0000005E8329BFD06\x1a");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\n+CMGS: 0\r\n\r\nOK\r\n");
    primary.send("AT+CMGS=18\r");
    primary.receive("> ");
    primary.send("00\x1b");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\nOK\r\n");
    primary.send("AT\r");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\nOK\r\n");
}

TEST_F(AtPorts, CanBeOpenedAgainAfterAnExclusiveProgramWasKilled)
{
    ASSERT_EQ(ioctl(primary.file(), TIOCEXCL), 0);
    primary.send("AT\r");
    primary.receive("OK\r\n");
    int exclusive = 1;
    ASSERT_EQ(ioctl(primary.file(), TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
}

TEST_F(AtPorts, AreRawTerminals)
{
    termios settings{};
    ASSERT_EQ(tcgetattr(primary.file(), &settings), 0);
    EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(settings.c_oflag & OPOST, 0U);
}

// A search takes seconds at the simulation's own pace.
TEST(AtPortsAtFullPace, CancelLongCommands)
{
    scenario::RealClock clock;
    simulated::Modem modem(clock, 1);
    at_front::AnswerFaults answer_faults;
    const at_front::Front front(modem, answer_faults, at_front::terminals(2));
    const Line primary(front.paths().at(0)), secondary(front.paths().at(1));
    scenario::Words words("state registered");
    scenario::parse_command(simulated::modem_commands(modem), words)();
    primary.send("ATE0\r");
    primary.receive("OK\r\n");
    primary.send("AT+COPS=?\r\n"); // the line feed belongs to the line
    while (modem.status().search != daemons::CmeError::search_running)
        std::this_thread::yield();
    secondary.send("AT\r");
    EXPECT_EQ(secondary.receive("OK\r\n"), "AT\r\r\nOK\r\n"); // the other port is free
    primary.send("x");
    EXPECT_EQ(primary.receive("ERROR\r\n"), "\r\nERROR\r\n");
    EXPECT_EQ(modem.status().search, daemons::CmeError::search_running);
    primary.send("AT\r");
    EXPECT_EQ(primary.receive("OK\r\n"), "\r\nOK\r\n");
}

int connected_to(const std::string &path)
{
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(connect(file, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    return file;
}

TEST(AtSocket, IsAPortForOneProgramAfterTheOther)
{
    scenario::RealClock clock{scenario::TimeScale(0)};
    simulated::Modem modem(clock, 1);
    at_front::AnswerFaults answer_faults;
    const std::string path = "/tmp/port";
    at_front::Wires ports;
    ports.push_back(std::make_unique<at_front::Socket>(path));
    std::optional<at_front::Front> front(std::in_place, modem, answer_faults, std::move(ports));
    EXPECT_EQ(front->paths(), std::vector{path});
    {
        const Line first(connected_to(path));
        first.send("ATE0\r");
        EXPECT_EQ(first.receive("OK\r\n"), "ATE0\r\r\nOK\r\n");
    }
    const Line next(connected_to(path));
    next.send("AT\r");
    EXPECT_EQ(next.receive("OK\r\n"), "\r\nOK\r\n"); // the port's settings have stayed
    front.reset();
    EXPECT_EQ(next.receive("\n"), ""); // the modem has gone
    EXPECT_NE(access(path.c_str(), F_OK), 0);
}

TEST(AtSocket, NeedsAPlace)
{
    EXPECT_THROW(at_front::Socket("/tmp/missing/port"), std::system_error);
}

} // namespace
