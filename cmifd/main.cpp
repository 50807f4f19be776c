#include "cli/about.h"
#include "cli/help.h"
#include "cli/usage_error.h"
#include "command_line.h"
#include "daemons/printable.h"
#include "server.h"

#include <cstdio>
#include <exception>

namespace cmifd
{
namespace
{

constexpr int usage_status = 2;

int run_line(const cli::Line &line)
{
    if (const auto text = cli::about(line))
        return cli::print(tables(), *text);
    const Options options = options_of(line.arguments);
    return options.probe ? probe(options) : serve(options);
}

int program(int count, char **words)
try {
    if (count == 1) {
        std::fputs(cli::short_help(tables()).c_str(), stderr);
        return usage_status;
    }
    return run_line(cli::parse(tables(), {words + 1, words + count}));
} catch (const cli::UsageError &error) {
    std::fprintf(stderr, "cmifd: %s\n", daemons::printable(error.what()).c_str());
    if (!error.hint().empty())
        std::fprintf(stderr, "  %s\n", daemons::printable(error.hint()).c_str());
    return usage_status;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmifd: %s\n", daemons::printable(error.what()).c_str());
    return 1;
}

} // namespace
} // namespace cmifd

int main(int count, char **words)
{
    return cmifd::program(count, words);
}
