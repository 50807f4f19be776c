#include "cli/program.h"
#include "cmif-record/reader.h"
#include "cmif-sim/box/running_box.h"
#include "cmif-sim/router/simulation.h"
#include "cmif-sim/usb/at_modem.h"
#include "cmif-sim/usb/computer.h"
#include "command_line.h"
#include "daemons/printable.h"
#include "scenario/script.h"

#include <cstdio>
#include <sstream>

namespace cmif_sim
{
namespace
{

int run_simulation(const cli::Line &line)
{
    const std::vector<std::string> command = line.arguments.all("command");
    ServerOptions options = server_options(line.arguments);
    if (line.path == "at-modem")
        options = at_modem_options(options);
    if (line.path == "usb")
        options = usb_options(options);
    check_scenario(options);
    if (line.path == "at-modem")
        return serve_at_modem(options);
    if (line.path == "usb")
        return run_usb(options, command);
    return line.path == "serve" ? serve(options, -1) : run(options, command);
}

int run_command_line(const cli::Line &line)
{
    if (line.path == "ctl")
        return control(chosen_box(line.arguments), line.arguments.all("line"));
    if (line.path == "status")
        return print_status(chosen_box(line.arguments), line.arguments.has("json"));
    if (line.path == "enter")
        return enter(chosen_box(line.arguments), line.arguments.all("command"));
    return run_simulation(line);
}

// What is wrong with a file may take several lines.
int report(const char *prefix, const std::string &text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::fprintf(stderr, "%s%s\n", prefix, daemons::printable(line).c_str());
    return 2;
}

int run_line(const cli::Line &line)
try {
    return run_command_line(line);
} catch (const scenario::BadScript &error) {
    return report("", error.what()); // FILE:LINE:COLUMN first, as editors read it
} catch (const cmif_record::RecordingError &error) {
    return report("cmif-sim: ", error.what());
}

} // namespace
} // namespace cmif_sim

int main(int count, char **words)
{
    return cli::run_program(cmif_sim::tables(), count, words, cmif_sim::run_line);
}
