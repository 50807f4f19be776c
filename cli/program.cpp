#include "program.h"

#include "about.h"
#include "daemons/printable.h"
#include "help.h"
#include "usage_error.h"

#include <cstdio>
#include <exception>

namespace cli
{
namespace
{

constexpr int usage_status = 2;

int run_line(const Line &line, const std::function<int(const Line &)> &work)
{
    if (const auto text = about(line))
        return print(*line.program, *text);
    return work(line);
}

void print_error(const Program &program, std::string_view message)
{
    std::fprintf(stderr, "%s: %s\n", program.name, daemons::printable(message).c_str());
}

} // namespace

int run_program(const Program &program, int count, char **words,
                const std::function<int(const Line &)> &work)
try {
    if (count == 1) {
        std::fputs(short_help(program).c_str(), stderr);
        return usage_status;
    }
    return run_line(parse(program, {words + 1, words + count}), work);
} catch (const UsageError &error) {
    print_error(program, error.what());
    if (!error.hint().empty())
        std::fprintf(stderr, "  %s\n", daemons::printable(error.hint()).c_str());
    return usage_status;
} catch (const std::exception &error) {
    print_error(program, error.what());
    return 1;
}

} // namespace cli
