#include "at_modem.h"
#include "cli/about.h"
#include "cli/help.h"
#include "cli/usage_error.h"
#include "cmif-record/reader.h"
#include "command_line.h"
#include "daemons/printable.h"
#include "remote.h"
#include "scenario/script.h"
#include "simulation.h"
#include "usb.h"

#include <cstdio>
#include <exception>
#include <sstream>

namespace cmif_sim
{
namespace
{

constexpr int usage_status = 2;

void print_lines(const char *prefix, const std::string &text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::fprintf(stderr, "%s%s\n", prefix, daemons::printable(line).c_str());
}

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

int run_line(const cli::Line &line)
{
    if (const auto text = cli::about(line))
        return cli::print(tables(), *text);
    if (line.path == "ctl")
        return control(chosen_box(line.arguments), line.arguments.all("line"));
    if (line.path == "status")
        return print_status(chosen_box(line.arguments), line.arguments.has("json"));
    if (line.path == "enter")
        return enter(chosen_box(line.arguments), line.arguments.all("command"));
    return run_simulation(line);
}

int program(int count, char **words)
try {
    if (count == 1) {
        std::fputs(cli::short_help(tables()).c_str(), stderr);
        return usage_status;
    }
    return run_line(cli::parse(tables(), {words + 1, words + count}));
} catch (const cli::UsageError &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", daemons::printable(error.what()).c_str());
    if (!error.hint().empty())
        std::fprintf(stderr, "  %s\n", daemons::printable(error.hint()).c_str());
    return usage_status;
} catch (const scenario::BadScript &error) { // FILE:LINE:COLUMN first, as editors read it
    print_lines("", error.what());
    return usage_status;
} catch (const cmif_record::RecordingError &error) {
    print_lines("cmif-sim: ", error.what());
    return usage_status;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace
} // namespace cmif_sim

int main(int count, char **words)
{
    return cmif_sim::program(count, words);
}
