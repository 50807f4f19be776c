#include "global_options.h"

#include "cli/numbers.h"
#include "cli/option_error.h"
#include "cmifctl/output/terminal.h"

#include <cstdlib>

namespace cmifctl
{
namespace
{

constexpr double max_seconds = 1e6;
constexpr double min_watch = 0.1;
constexpr double default_watch = 2;

double seconds(const std::string &source, const std::string &text, double min,
               const std::string &range)
{
    const auto number = cli::decimal_number(text);
    if (!number || *number < min || *number > max_seconds)
        cli::fail_seconds(source, text, range);
    return *number;
}

double timeout(const std::string &source, const std::string &text)
{
    return seconds(source, text, 0, "A number of seconds from 0 to 1000000; 0 = no limit.");
}

double watch_interval(const std::string &text)
{
    return text.empty()
               ? default_watch
               : seconds("--watch", text, min_watch, "A number of seconds from 0.1 to 1000000.");
}

OutputOptions output_options(const Arguments &given)
{
    OutputOptions options;
    if (given.has("json") || given.has("output"))
        options.format = given.has("output") ? Format{given.code("output", enums::output_formats)}
                                             : Format::json;
    if (given.has("json") && !options.json())
        cli::fail_exclusive("--json", "--output " + given.text("output"));
    if (given.has("color"))
        options.colour = Colour{given.code("color", enums::colours)};
    options.fields = given.all("field");
    if (!options.fields.empty() && options.format != Format::human)
        cli::fail_exclusive("--field", given.has("output") ? "--output" : "--json");
    if (const auto interval = given.given("watch"))
        options.watch = watch_interval(*interval);
    return options;
}

} // namespace

void take_global_options(const Arguments &given, bool makes_calls, Context &context)
{
    context.output = output_options(given);
    const char *variable = makes_calls ? std::getenv("CMIF_TIMEOUT") : nullptr;
    if (const auto text = given.given("timeout"))
        context.options.timeout = timeout("--timeout", *text);
    else if (variable != nullptr && *variable != '\0')
        context.options.timeout = timeout("CMIF_TIMEOUT", variable);
    if (given.has("trace"))
        context.options.trace = show_trace_line;
}

} // namespace cmifctl
