#include "terminal.h"

#include "cli/numbers.h"
#include "terminal_text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace cmifctl
{
namespace
{

bool progress_shown = false;

} // namespace

void print(const std::string &text)
{
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        throw OutputError{errno};
}

void note(const std::string &text)
{
    clear_progress();
    std::fprintf(stderr, "cmifctl: note: %s\n", escape_controls(text).c_str());
}

void show_trace_line(std::string_view line)
{
    std::fprintf(stderr, "%s\n", escape_controls(line).c_str());
}

void show_progress(const std::string &text)
{
    if (isatty(STDERR_FILENO) != 1)
        return;
    std::fprintf(stderr, "\r\033[K%s", escape_controls(text).c_str());
    progress_shown = true;
}

void clear_progress()
{
    if (std::exchange(progress_shown, false))
        std::fputs("\r\033[K", stderr);
}

std::size_t output_columns()
{
    winsize size{};
    if (isatty(STDOUT_FILENO) == 1 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 &&
        size.ws_col > 0)
        return size.ws_col;
    const char *columns = std::getenv("COLUMNS");
    const auto number = cli::whole_number(columns != nullptr ? columns : "");
    return number && *number > 0 ? static_cast<std::size_t>(*number) : 0;
}

bool output_in_colour(Colour colour)
{
    if (colour != Colour::automatic)
        return colour == Colour::always;
    const char *no_color = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && (no_color == nullptr || *no_color == '\0') &&
           terminal != nullptr && std::string(terminal) != "dumb";
}

} // namespace cmifctl
