// Commands to a running router: the socket, whole batches, the manual clock, a first state.
#include "cmif-sim/control/box_sockets.h"
#include "tests/support/faulty_server.h"

#include <chrono>
#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>

namespace
{

namespace fs = std::filesystem;
using cmif_sim::Answer;

class Control : public FaultyServer
{
protected:
    pid_t box() { return server->process().process(); }
    // What the action reports when it fails.
    template <class Action>
    static std::string error_of(const Action &action)
    {
        try {
            action();
        } catch (const std::exception &error) {
            return error.what();
        }
        return "";
    }
    static fs::path directory() { return "/tmp/cmif-sim-" + std::to_string(geteuid()); }
    std::string socket_path() { return directory() / std::to_string(box()); }
};

TEST_F(Control, CarriesOutAllLinesInTheirOrder)
{
    start();
    command("state registered\n\n# a comment\nsignal rsrp=-118\nstate connected\n");
    EXPECT_EQ(get("lte_qmi_connection_status"), "3");
}

TEST_F(Control, CarriesOutNothingIfOneLineIsWrong)
{
    start();
    const Answer wrong = give("state connected\nsignal rsrp=0\nfault at 12 drop\nfrob");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_TRUE(wrong.text.starts_with("2:8: rsrp is a whole number from -140 to -44"))
        << wrong.text;
    EXPECT_NE(wrong.text.find("\n4:1: unknown command 'frob'; it is one of: "), std::string::npos)
        << wrong.text;
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    EXPECT_EQ(status().find("fault"), std::string::npos);
}

TEST_F(Control, NamesTheLineThatFailed)
{
    start();
    const Answer failed = give("state unlocked\nconnection drop\nstate connected");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.text, "2: no connection to drop: the data connection is down\n");
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
}

// A router that was told nothing since, and its store has all keys again.
TEST_F(Control, FillsANewStoreAfterTheOldOneWasDeleted)
{
    start();
    command("state connected\nsignal rsrp=-80 rsrq=-5 rssi=-70 sinr=10");
    auto before = all();
    EXPECT_GT(before.size(), 40U);
    fs::remove(database().string() + "-lock");
    fs::remove(database());
    command("signal rsrp=-81 rsrq=-5 rssi=-70 sinr=10");
    before["lte_query_network_rsrp"] = "-81";
    auto after = all();
    for (auto *keys : {&before, &after})
        keys->erase("lte_qmi_connection_uptime");
    EXPECT_EQ(after, before);
}

TEST_F(Control, HasASocketForThisUserAlone)
{
    start();
    EXPECT_EQ(cmif_sim::find_boxes(), std::vector<pid_t>{box()});
    struct stat found = {};
    ASSERT_EQ(stat(directory().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0700U);
    const std::string path = socket_path();
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Control, ForgetsAKilledRouter)
{
    start();
    const std::string path = socket_path();
    EXPECT_EQ(server->end(SIGKILL), 128 + SIGKILL);
    EXPECT_TRUE(fs::exists(path));
    // Its daemons, which end with it, may hold the socket a moment longer.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!cmif_sim::find_boxes().empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_EQ(cmif_sim::find_boxes(), std::vector<pid_t>{});
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Control, RefusesADirectoryThatOthersMayUse)
{
    start();
    fs::permissions(directory(), fs::perms::group_exec, fs::perm_options::add);
    const std::string error = directory().string() + " is not this user's alone";
    EXPECT_EQ(error_of([] { cmif_sim::find_boxes(); }), error);
    EXPECT_EQ(error_of([&] { cmif_sim::connect_to_box(box()); }), error);
    fs::permissions(directory(), fs::perms::owner_all);
    EXPECT_EQ(cmif_sim::find_boxes().size(), 1U);
}

TEST_F(Control, RefusesALinkInPlaceOfTheSocket)
{
    start();
    fs::rename(socket_path(), socket_path() + "x");
    fs::create_symlink(socket_path() + "x", socket_path());
    EXPECT_EQ(error_of([&] { cmif_sim::connect_to_box(box()); }),
              socket_path() + " is not this user's alone");
    fs::remove(socket_path() + "x");
}

// A process that closes each connection at once.
TEST_F(Control, NamesTheRouterThatDoesNotRespond)
{
    const cmif_sim::BoxSocket socket;
    std::thread other([&] { close(accept(socket.file(), nullptr, nullptr)); });
    EXPECT_EQ(error_of([] { cmif_sim::ask_box(getpid(), "status"); }),
              "the router of process " + std::to_string(getpid()) + " does not respond");
    other.join();
}

TEST_F(Control, IsNotAvailableWithoutADirectoryOfThisUser)
{
    fs::remove_all(directory());
    std::ofstream(directory()) << "";
    start();
    EXPECT_NE(server->errors().find("this router takes no commands: "), std::string::npos);
    EXPECT_EQ(ask_at(4), answer::ok);
    fs::remove(directory());
}

// A program that connects and says nothing.
TEST_F(Control, IsNotHeldUpByASilentProgram)
{
    start();
    const int silent = cmif_sim::connect_to_box(box());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(give("state unlocked").status, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
    // It is left after a while.
    char greeting[16];
    EXPECT_GT(recv(silent, greeting, sizeof greeting, 0), 0);
    EXPECT_EQ(recv(silent, greeting, sizeof greeting, 0), 0);
    close(silent);
}

TEST_F(Control, RefusesAQuestionThatItDoesNotKnow)
{
    start();
    EXPECT_EQ(cmif_sim::ask_box(box(), "frob").status, 2);
}

TEST_F(Control, LetsNoTimePassOnAManualClock)
{
    cmif_sim::ServerOptions options = both();
    options.manual_clock = true;
    options.pace = 1;
    start(options);
    send_at(12, {"1234"});
    command("advance 30s");
    EXPECT_TRUE(payload(at_replies(), 12));
    command("advance 2min");
    EXPECT_EQ(get("lte_network_reg_status_state"), "1");
}

// Sixteen replies to a full queue, each of which is dropped after a second.
TEST_F(Control, AdvancesWithoutARequestThatTakesTooLong)
{
    cmif_sim::ServerOptions options = both();
    options.manual_clock = true;
    start(options);
    command("fault at foreign 100000");
    command("fault at 4 twice\nfault at 4 twice\nfault at 4 twice\nfault at 4 twice");
    send_at(4);
    while (server->errors().empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const Answer failed = give("advance 1s");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.text, "1: a request was still at work after 10 s\n");
}

TEST_F(Control, AdvancesAManualClockOnly)
{
    start();
    const Answer wrong = give("advance 5s");
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.text, "1:1: advance needs a router with --clock manual\n");
}

TEST_F(Control, DelaysByTheManualClock)
{
    cmif_sim::ServerOptions options = both();
    options.manual_clock = true;
    start(options);
    command("fault at 4 delay 5s");
    send_at(4);
    while (waiting(at_requests()) > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    command("advance 4s");
    EXPECT_TRUE(stays_silent(at_replies(), 4));
    command("advance 1s");
    EXPECT_EQ(waiting(at_replies()), 1U); // at once: the daemon was waited for
}

TEST_F(Control, StartsInTheGivenState)
{
    for (const char *state : {"locked", "unlocked", "registered", "connected"}) {
        server.reset();
        cmif_sim::ServerOptions options = both();
        options.state = state;
        start(options);
        EXPECT_EQ(get("lte_sim_status"), state == std::string("locked") ? "SIM PIN" : "READY");
        EXPECT_EQ(get("lte_qmi_connection_status"), state == std::string("connected") ? "3" : "1");
    }
}

TEST_F(Control, RunsTheScenario)
{
    cmif_sim::ServerOptions options = both();
    options.scenario_name = "s";
    options.scenario = "state unlocked\nat 0s fault at 4 ret 13\nwhen request 6 fault at 6 ret 14\n"
                       "when request 2 connection drop";
    start(options);
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(ask_at(4), 13);
    EXPECT_EQ(ask_at(6), 14);
    EXPECT_EQ(ask_at(2, {"", "", "", "0"}), answer::ok);
    EXPECT_EQ(server->errors(),
              "cmif-sim: s:4: no connection to drop: the data connection is down\n");
}

TEST_F(Control, ShowsTheStepsToCome)
{
    cmif_sim::ServerOptions options = both();
    options.pace = 1;
    options.scenario = "state unlocked\nat 100min sim remove # gone\nwhen sms fault at die";
    start(options);
    EXPECT_NE(status().find("step     at 100min sim remove\nstep     when sms fault at die\n"),
              std::string::npos)
        << status();
}

TEST_F(Control, ShowsTheTimeOfAManualClock)
{
    cmif_sim::ServerOptions options = both();
    options.manual_clock = true;
    start(options);
    EXPECT_NE(status().find("clock    manual, at 0 s\n"), std::string::npos) << status();
    command("advance 150s");
    EXPECT_NE(status().find("clock    manual, at 150 s\n"), std::string::npos) << status();
}

TEST_F(Control, ShowsThatTheMarkerIsMissing)
{
    start();
    EXPECT_NE(status().find("QMI      serving"), std::string::npos) << status();
    command("fault qmi not-ready");
    EXPECT_NE(status().find("QMI      not ready"), std::string::npos) << status();
    command("fault qmi ready");
    EXPECT_NE(status().find("QMI      serving"), std::string::npos) << status();
}

TEST_F(Control, RunsTheModemAlone)
{
    cmif_sim::ServerOptions options = both();
    options.at = options.qmi = false;
    start(options);
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    command("state registered");
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(msgget(CMIF_AT_REQUEST_KEY, 0), -1);
    EXPECT_EQ(msgget(CMIF_QMI_REQUEST_KEY, 0), -1);
    EXPECT_NE(status().find("AT       left out\nQMI      left out\n"), std::string::npos);
}

} // namespace
