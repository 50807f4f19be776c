// The example scenarios: each is understood, has a line in the list of them, and leaves the modem
// where its comments say.
#include "scenario/timeline.h"
#include "tests/support/commanded_modem.h"

#include <filesystem>
#include <fstream>
#include <set>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

const fs::path folder = EXAMPLE_SCENARIOS;

std::set<std::string> names()
{
    std::set<std::string> found;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".cmif")
            found.insert(entry.path().stem());
    return found;
}

class ExampleScenarios : public CommandedModem
{
protected:
    // Faults are the daemons' affair; there are none here.
    ExampleScenarios()
    {
        commands.push_back({"fault", "", "", [](scenario::Words &words) -> scenario::Action {
                                words.take_rest("the fault");
                                return [] {};
                            }});
    }
    ~ExampleScenarios() override { modem.watch_events({}); }

    scenario::Script read(const std::string &name) const
    {
        return scenario::read_script(folder / (name + ".cmif"), commands);
    }
    void play(const std::string &name)
    {
        timeline.emplace(clock, read(name),
                         [name](const scenario::Step &step, const std::string &why) {
                             ADD_FAILURE() << name << ':' << step.line << ": " << why;
                         });
        modem.watch_events([this](std::string_view event) { timeline->event(event); });
        timeline->start();
    }
    std::optional<scenario::Timeline> timeline;
};

TEST_F(ExampleScenarios, AreTwelveAndAllAreUnderstood)
{
    EXPECT_EQ(names(), (std::set<std::string>{"daemon-crash-in-search", "fade", "frozen-daemon",
                                              "handover", "late-answers", "network-denied",
                                              "pdn-lost-and-back", "sim-swap", "sms-storm",
                                              "stale-reply", "tunnel", "wrong-pin-to-dead-card"}));
    for (const std::string &name : names())
        EXPECT_FALSE(read(name).empty()) << name;
}

TEST_F(ExampleScenarios, AreListed)
{
    std::ifstream file(folder / "README.md");
    const std::string list{std::istreambuf_iterator<char>(file), {}};
    for (const std::string &name : names())
        EXPECT_NE(list.find("[" + name + ".cmif](" + name + ".cmif)"), std::string::npos) << name;
}

// Without the daemons' faults, but each to its end.
TEST_F(ExampleScenarios, FailInNoStep)
{
    for (const std::string &name : names()) {
        play(name);
        EXPECT_TRUE(clock.advance(2h));
        modem.watch_events({});
        run("state locked");
    }
}

TEST_F(ExampleScenarios, Fade)
{
    play("fade");
    clock.advance(16s);
    EXPECT_EQ(status().signal.rsrp, -118);
    EXPECT_EQ(status().signal.rsrq, -16);
    clock.advance(10s);
    EXPECT_EQ(status().registration, Registration::searching);
    EXPECT_EQ(status().signal.rsrp, std::nullopt);
    EXPECT_NE(status().last_cell.cell_id, "");
    clock.advance(12s); // 38 s
    EXPECT_EQ(status().registration, Registration::home);
    EXPECT_EQ(status().signal.rsrp, -126);
}

TEST_F(ExampleScenarios, Tunnel)
{
    play("tunnel");
    clock.advance(10s);
    EXPECT_EQ(status().last_error, CmeError::no_network_service);
    clock.advance(14s);
    EXPECT_EQ(status().technology, Technology::utran);
    clock.advance(20s);
    EXPECT_EQ(status().technology, Technology::eutran);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
}

TEST_F(ExampleScenarios, Handover)
{
    play("handover");
    const std::string first = status().cell.cell_id;
    clock.advance(6s);
    EXPECT_NE(status().cell.cell_id, first);
    EXPECT_EQ(status().uptime, 6);
}

TEST_F(ExampleScenarios, SimSwap)
{
    play("sim-swap");
    const std::string first = status().iccid;
    clock.advance(6s);
    EXPECT_EQ(status().sim, SimStatus::absent);
    clock.advance(10s);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_NE(status().iccid, first);
    const std::string second = status().iccid;
    clock.advance(1min);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_EQ(status().iccid, second);
}

TEST_F(ExampleScenarios, WrongPinToDeadCard)
{
    play("wrong-pin-to-dead-card");
    EXPECT_EQ(modem.enter_pin("0000"), CmeError::sim_puk_required);
    EXPECT_EQ(modem.enter_puk("00000000", "1234"), CmeError::sim_failure);
    EXPECT_EQ(status().sim, SimStatus::permanently_blocked);
    clock.advance(11min);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
}

TEST_F(ExampleScenarios, SmsStorm)
{
    play("sms-storm");
    clock.advance(10s);
    modem.list_messages();
    EXPECT_EQ(status().messages.size(), 255U);
    modem.delete_messages(0, DeleteFlag::all);
    modem.list_messages();
    ASSERT_EQ(status().messages.size(), 251U + 4);
    EXPECT_EQ(status().messages[252].sender, "Reisebuero");
    EXPECT_EQ(status().messages[251].text, "100% real: %s %n %d");
    EXPECT_EQ(status().messages[253].text.size(), 153U);
    EXPECT_EQ(status().messages[254].sender, "+12025550167");
}

TEST_F(ExampleScenarios, NetworkDenied)
{
    play("network-denied");
    clock.advance(6s);
    EXPECT_EQ(status().registration, Registration::denied);
    EXPECT_EQ(modem.connect(), CmeError::network_not_allowed);
    clock.advance(28s);
    EXPECT_EQ(status().registration, Registration::home);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
}

TEST_F(ExampleScenarios, PdnLostAndBack)
{
    play("pdn-lost-and-back");
    const std::string first = status().ipv4_address;
    clock.advance(7s);
    EXPECT_EQ(status().connection, ConnectionState::connected);
    EXPECT_NE(status().ipv4_address, first);
    clock.advance(30s);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(status().registration, Registration::home);
}

} // namespace
