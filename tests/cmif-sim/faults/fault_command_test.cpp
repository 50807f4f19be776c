// The grammar of faults: what is read, and what is wrong.
#include "cmif-sim/faults/fault_command.h"
#include "scenario/manual_clock.h"

#include <gtest/gtest.h>

namespace
{

using namespace cmif_sim;

class FaultCommand : public testing::Test
{
protected:
    // "column: message" of the error, or "".
    std::string error_of(const std::string &line)
    {
        try {
            scenario::Words words(line);
            scenario::parse_command(commands, words);
        } catch (const scenario::ScriptError &error) {
            return std::to_string(error.column()) + ": " + error.what();
        }
        return "";
    }
    // What the line arms on the AT channel.
    std::vector<std::string> armed(const std::string &line)
    {
        scenario::Words words(line);
        at.clear_faults();
        scenario::parse_command(commands, words)();
        return at.status().faults;
    }

    scenario::ManualClock clock;
    FaultyLink at{Channel::at, clock, {}, false}, qmi{Channel::qmi, clock, {}, false};
    scenario::Commands commands{fault_command({&at, &qmi})};
};

TEST_F(FaultCommand, IsReadWhole)
{
    const struct {
        const char *line, *fault;
    } rows[] = {
        {"fault at drop", "drop next 1"},
        {"fault at 12 drop", "12 drop next 1"},
        {"fault all 12 drop next", "12 drop next 1"},
        {"fault at 12 drop next 7", "12 drop next 7"},
        {"fault at drop always", "drop always"},
        {"fault at 24 delay 1.5s always", "24 delay 1500ms always"},
        {"fault at ret -1", "ret -1 next 1"},
        {"fault at short", "short 4 next 1"},
        {"fault at short 10 next 3", "short 10 next 3"},
        {"fault at long", "long 8 next 1"},
        {"fault at drop after registered", "drop after registered next 1"},
        {"fault at drop after request 12 always", "drop after request 12 always"},
        {"fault at die after searching", "die after searching"},
        {"fault at die next", "die next 1"},
        {"fault at ignore", "ignore next 1"},
        {"fault at 12 die", "12 die next 1"},
        {"fault at 24 freeze next 2", "24 freeze next 2"},
        {"fault at 12 stale 3 after sms", "12 stale 3 after sms"},
        {"fault at remove-queue reply after sms", "remove-queue reply after sms"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(armed(row.line), std::vector<std::string>{row.fault}) << row.line;
}

TEST_F(FaultCommand, SideChoosesTheChannel)
{
    armed("fault qmi drop");
    EXPECT_TRUE(at.status().faults.empty());
    EXPECT_EQ(qmi.status().faults.size(), 1U);
    armed("fault all drop");
    EXPECT_EQ(at.status().faults.size(), 1U);
    EXPECT_EQ(qmi.status().faults.size(), 2U);
    armed("fault clear");
    EXPECT_TRUE(qmi.status().faults.empty());
}

#define USAGE                                                                                      \
    "; the command is: fault at|qmi|all [CODE] KIND [VALUE] [after EVENT] [next [N] | always], "   \
    "or clear"

TEST_F(FaultCommand, NamesWhatIsWrongAndWhatIsAllowed)
{
    const struct {
        const char *line, *error;
    } rows[] = {
        {"fault", "6: the daemon is missing; it is one of: at, qmi, all, clear"},
        {"fault both drop", "7: the daemon is one of: at, qmi, all, clear, not 'both'"},
        {"fault at", "9: a kind of fault is missing; it is one of: delay, drop, twice, wrong-type, "
                     "short, long, unterminated, noise, ret, ignore, freeze, die, thaw, restart, "
                     "remove-queue, foreign"},
        {"fault at 12",
         "12: a kind of fault is missing; it is one of: delay, drop, twice, wrong-type, short, "
         "long, unterminated, noise, ret, ignore, freeze, die, stale"},
        {"fault at 0 drop", "10: the request code is a whole number from 1 to 255, not '0'"},
        {"fault qmi 2 drop", "11: the request code is one of: 1, 3, 4, 5, 6, 8, 9, not '2'"},
        {"fault at delay", "15: the value of delay is missing; it is a number with its unit: "
                           "250ms, 1.5s, 2min; at most 1440min"},
        {"fault at delay 5", "16: the value of delay is a number with its unit: 250ms, 1.5s, 2min; "
                             "at most 1440min, not '5'"},
        {"fault at short 0", "16: the value of short is a whole number from 1 to 116, not '0'"},
        {"fault qmi short 313",
         "17: the value of short is a whole number from 1 to 312, not '313'"},
        {"fault at 12 drop after", "23: the event is missing; it is one of: registered, "
                                   "unregistered, connected, disconnected, sim-ready, searching, "
                                   "search-done, sms, down, up, request N, qmi-request N"},
        {"fault at remove-queue both",
         "23: the value of remove-queue is one of: request, reply, not 'both'"},
        {"fault at drop next 0",
         "20: the number of times is a whole number from 1 to 1000000, not '0'"},
        {"fault at drop never", "15: unexpected 'never'" USAGE},
        {"fault at thaw always", "15: unexpected 'always'" USAGE},
        {"fault at stale", "10: stale needs a request code before it: fault at 12 stale"},
        {"fault at 12 restart", "13: restart takes no request code before it"},
        {"fault at not-ready",
         "10: only the QMI daemon has a readiness marker: fault qmi not-ready"},
        {"fault all ready", "11: only the QMI daemon has a readiness marker: fault qmi ready"},
        {"fault clear at", "13: unexpected 'at'" USAGE},
    };
    for (const auto &row : rows)
        EXPECT_EQ(error_of(row.line), row.error) << row.line;
    EXPECT_TRUE(error_of("fault at frob").starts_with("10: a kind of fault is one of: delay, drop"))
        << error_of("fault at frob");
    EXPECT_TRUE(error_of("fault at drop after noon").starts_with("21: the event is one of: "));
    for (const char *line : {"fault at 5 drop", "fault at 28 drop"})
        EXPECT_TRUE(error_of(line).starts_with("10: the request code is one of: 1, 2, 3, 4, 6, 7,"))
            << error_of(line);
    EXPECT_TRUE(error_of("fault all 28 drop").ends_with(" 25, 26, 27, not '28'"));
    EXPECT_EQ(error_of("fault all 5 drop"), "");
    EXPECT_TRUE(at.status().faults.empty());
}

TEST_F(FaultCommand, OffersOnlyTheKindsThatItTakes)
{
    const auto offers = [this](const std::string &line) {
        std::vector<std::string> texts;
        scenario::Words words(line);
        EXPECT_THROW(scenario::parse_command(commands, words), scenario::ScriptError);
        for (const auto &offer : words.offers())
            texts.push_back(offer.text);
        return texts;
    };
    const auto has = [](const std::vector<std::string> &texts, const char *text) {
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    };
    EXPECT_FALSE(has(offers("fault at 12"), "ready"));
    EXPECT_FALSE(has(offers("fault at 12"), "restart"));
    EXPECT_TRUE(has(offers("fault at 12"), "stale"));
    EXPECT_FALSE(has(offers("fault at"), "not-ready"));
    EXPECT_TRUE(has(offers("fault qmi"), "not-ready"));
}

TEST_F(FaultCommand, NeedsADaemonThatRuns)
{
    commands = {fault_command({nullptr, &qmi})};
    EXPECT_EQ(error_of("fault at drop"),
              "7: the daemon must be one that this router runs, not 'at'");
    EXPECT_EQ(error_of("fault all drop"), "");
}

} // namespace
