#include "cli/program.h"
#include "cli/usage_error.h"
#include "command_line.h"
#include "launch.h"

namespace cmif_record
{
namespace
{

int record(const cli::Line &line)
{
    const cli::Arguments &given = line.arguments;
    const std::vector<std::string> command = given.all("command");
    if (command.empty())
        throw cli::UsageError("missing DAEMON for 'cmif-record'", "Give it after --.");
    const std::string library = library_path();
    return become_recorded(start_recording(given.text("file"), {given.has("with-secrets")}),
                           library, command);
}

} // namespace
} // namespace cmif_record

int main(int count, char **words)
{
    return cli::run_program(cmif_record::tables(), count, words, cmif_record::record);
}
