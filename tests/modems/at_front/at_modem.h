// A port of the simulated modem without its terminal, on a clock that the test moves.
#ifndef TESTS_MODEMS_AT_FRONT_AT_MODEM_H
#define TESTS_MODEMS_AT_FRONT_AT_MODEM_H

#include "modems/at_front/interpreter.h"
#include "tests/support/commanded_modem.h"

class AtModem : public CommandedModem
{
protected:
    // What a terminal receives, without the line ends: "+CSQ: 25,99|OK".
    std::string answer(const std::string &line) { return shown(port.run(line)); }
    std::string reports() { return shown(port.reports()); }

    static std::string shown(const std::string &received)
    {
        std::string text;
        for (const char c : received) {
            if (c == '\n' && !text.empty() && text.back() != '|')
                text += '|';
            if (c != '\n' && c != '\r')
                text += c;
        }
        return text.ends_with('|') ? text.substr(0, text.size() - 1) : text;
    }

    // Lets the modem's time run until a command that waits is answered.
    std::string answer_in_time(const std::string &line)
    {
        std::string text;
        std::atomic<bool> done = false;
        std::thread thread([&] {
            text = answer(line);
            done = true;
        });
        while (!done)
            clock.advance(std::chrono::milliseconds(100));
        thread.join();
        return text;
    }

    void register_modem() { run("state registered"); }

    at_front::AnswerFaults answer_faults;
    at_front::Device device{modem, answer_faults, simulated::ModemState::hardware};
    bool called_off = false;
    at_front::Interpreter port{device, [this] { return called_off; }};
};

#endif
