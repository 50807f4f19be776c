// The simulated modem on a clock that the test moves, with the commands of the scenario language.
#ifndef TESTS_SUPPORT_COMMANDED_MODEM_H
#define TESTS_SUPPORT_COMMANDED_MODEM_H

#include "modems/simulated/commands.h"
#include "scenario/manual_clock.h"

#include <gtest/gtest.h>
#include <thread>

class CommandedModem : public testing::Test
{
protected:
    void run(std::string_view line)
    {
        scenario::Words words(line);
        scenario::parse_command(commands, words)();
    }
    // "column: message" of a line that can't be parsed.
    std::string error(std::string_view line) const
    {
        try {
            scenario::Words words(line);
            scenario::parse_command(commands, words);
        } catch (const scenario::ScriptError &bad) {
            return std::to_string(bad.column()) + ": " + bad.what();
        }
        return "no error";
    }
    // Why a command that was parsed could not be carried out.
    std::string failure(std::string_view line)
    {
        try {
            run(line);
        } catch (const std::runtime_error &bad) {
            return bad.what();
        }
        return "no failure";
    }
    daemons::ModemStatus status() const { return modem.status(); }
    void set_apn(const std::string &apn)
    {
        daemons::DataProfile profile;
        profile.apn = apn;
        modem.set_data_profile(profile);
    }

    // A search that runs while the test goes on.
    class SearchThread
    {
    public:
        SearchThread(CommandedModem &test, std::vector<daemons::Operator> &found)
        {
            test.clock.begin_work();
            thread_ = std::thread([&] {
                const scenario::Work work(test.clock, scenario::Work::Begun{});
                result_ = test.modem.search(found);
            });
            test.clock.advance(std::chrono::seconds(0)); // until it waits
        }
        daemons::CmeError result()
        {
            thread_.join();
            return result_;
        }

    private:
        daemons::CmeError result_{};
        std::thread thread_;
    };
    daemons::CmeError search(std::vector<daemons::Operator> &found)
    {
        SearchThread thread(*this, found);
        clock.advance(std::chrono::seconds(5));
        return thread.result();
    }

    scenario::ManualClock clock;
    simulated::Modem modem{clock, 1};
    scenario::Commands commands = simulated::modem_commands(modem);
};

#endif
