#include "running_box.h"

#include "cmif-sim/control/box_sockets.h"
#include "cmif-sim/control/protocol.h"
#include "daemons/printable.h"
#include "program.h"
#include "sandbox/enter.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <sstream>

namespace cmif_sim
{
namespace
{

std::string joined(const std::vector<std::string> &words)
{
    std::string line;
    for (const std::string &word : words)
        line += (line.empty() ? "" : " ") + word;
    return line + "\n";
}

std::string standard_input()
{
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

// Each line of the text begins with the position of the error.
void print_errors(const std::string &text, const char *source)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::fprintf(stderr, "cmif-sim: %s:%s\n", source, daemons::printable(line).c_str());
}

void set_environment(const std::string &lines)
{
    std::istringstream input(lines);
    for (std::string line; std::getline(input, line);)
        if (const std::size_t equals = line.find('='); equals != std::string::npos)
            setenv(line.substr(0, equals).c_str(), line.substr(equals + 1).c_str(), 1);
}

} // namespace

int control(ChosenBox chosen, const std::vector<std::string> &words)
{
    const Answer answer =
        ask_box(choose_box(chosen), "run", words.empty() ? standard_input() : joined(words));
    print_errors(answer.text, words.empty() ? "standard input" : "command line");
    return answer.status;
}

int print_status(ChosenBox chosen, bool json)
{
    const pid_t box = choose_box(chosen);
    const Answer answer =
        json ? ask_box(box, "status-json", std::to_string(box)) : ask_box(box, "status");
    if (!json)
        std::printf("box      %d\n", static_cast<int>(box));
    std::fputs(answer.text.c_str(), stdout);
    return std::fflush(stdout) == 0 ? answer.status : 1;
}

int enter(ChosenBox chosen, const std::vector<std::string> &command)
{
    const pid_t box = choose_box(chosen);
    const Answer environment = ask_box(box, "environment");
    const TerminalGuard terminal;
    return sandbox::enter_sandbox(box, [&] {
        set_environment(environment.text);
        return run_command(command);
    });
}

} // namespace cmif_sim
