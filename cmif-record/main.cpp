#include "cli/completion.h"
#include "cli/help.h"
#include "cli/manual.h"
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

int print(const std::string &text)
{
    const bool printed = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (!printed)
        std::perror("cmif-record: standard output can't be written");
    return printed ? 0 : 1;
}

int record(const cli::Arguments &given)
{
    const std::vector<std::string> command = given.all("command");
    if (command.empty())
        throw cli::UsageError("missing DAEMON for 'cmif-record'", "Give it after --.");
    const std::string library = library_path();
    return become_recorded(create_recording(given.text("file"), given.has("with-secrets")), library,
                           command);
}

int run_line(const cli::Line &line)
{
    if (line.help())
        return print(cli::help_text(tables(), line.path));
    if (line.version())
        return print(std::string("cmif-record ") + tables().version + "\n");
    if (line.path == "manual")
        return print(cli::manual_page(tables()));
    if (line.path == "completion")
        return print(cli::completion_script(tables(), line.arguments.text("shell")));
    if (line.path == "complete")
        return print(cli::candidates_text(cli::complete(tables(), line.arguments.all("words"))));
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
