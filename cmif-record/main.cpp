#include "cli/about.h"
#include "cli/help.h"
#include "cli/usage_error.h"
#include "command_line.h"
#include "daemons/printable.h"
#include "launch.h"

#include <cstdio>
#include <exception>

namespace cmif_record
{
namespace
{

constexpr int usage_status = 2;

int record(const cli::Arguments &given)
{
    const std::vector<std::string> command = given.all("command");
    if (command.empty())
        throw cli::UsageError("missing DAEMON for 'cmif-record'", "Give it after --.");
    const std::string library = library_path();
    return become_recorded(start_recording(given.text("file"), {given.has("with-secrets")}),
                           library, command);
}

int run_line(const cli::Line &line)
{
    if (const auto text = cli::about(line))
        return cli::print(tables(), *text);
    return record(line.arguments);
}

int program(int count, char **words)
try {
    if (count == 1) {
        std::fputs(cli::short_help(tables()).c_str(), stderr);
        return usage_status;
    }
    return run_line(cli::parse(tables(), {words + 1, words + count}));
} catch (const cli::UsageError &error) {
    std::fprintf(stderr, "cmif-record: %s\n", daemons::printable(error.what()).c_str());
    if (!error.hint().empty())
        std::fprintf(stderr, "  %s\n", daemons::printable(error.hint()).c_str());
    return usage_status;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-record: %s\n", daemons::printable(error.what()).c_str());
    return 1;
}

} // namespace
} // namespace cmif_record

int main(int count, char **words)
{
    return cmif_record::program(count, words);
}
