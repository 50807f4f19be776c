#include "watch.h"

#include "client/signals.h"
#include "cmifctl/output/terminal.h"
#include "presentation.h"

#include <cmath>
#include <poll.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

constexpr const char *home_and_clear = "\033[H\033[J";

void show(const CommandLine &line, const std::string &text, bool first)
{
    const OutputOptions &output = line.context.output;
    if (output.json() || !output.fields.empty())
        return print(text);
    if (output.format == Format::human && isatty(STDOUT_FILENO) == 1)
        return print(home_and_clear + text);
    print((first ? "" : "\n") + text);
}

void read_once(const CommandLine &line, bool first)
{
    Context context = line.context;
    try {
        run(line.path, context);
        clear_progress();
        show(line, rendered(context, line.path), first);
    } catch (const Failure &failure) {
        if (first)
            throw;
        if (!line.context.output.json())
            show(line, "", first);
        print_failure(failure, line.path, line.context.output);
    }
}

void pause(const client::HeldSignals &signals, double seconds)
{
    pollfd file{signals.fd(), POLLIN, 0};
    poll(&file, 1, static_cast<int>(std::lround(std::min(seconds, 1e6) * 1000)));
    signals.check();
}

} // namespace

void watch(const CommandLine &line)
{
    const client::HeldSignals signals;
    try {
        for (bool first = true;; first = false) {
            read_once(line, first);
            pause(signals, *line.context.output.watch);
        }
    } catch (const OutputError &) {
        signals.check(); // the signal for a pipe without a reader
        throw;
    }
}

} // namespace cmifctl
