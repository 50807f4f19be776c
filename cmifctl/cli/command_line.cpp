#include "command_line.h"

#include "cli/line.h"
#include "cmifctl/output/enums.h"
#include "global_options.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

// Others print what the tool has in its tables, also where CMIF_TIMEOUT is wrong.
bool makes_calls(std::string_view path)
{
    return path != "completion" && path != "complete" && path != "manual";
}

bool is_json(std::string_view format)
{
    return cli::code_of(enums::output_formats, format) == static_cast<int>(Format::json);
}

} // namespace

CommandLine parse(int count, const char *const *words)
{
    const cli::Line line = cli::parse(tables(), {words + 1, words + count});
    CommandLine parsed{.path = line.path, .help = line.help()};
    if (line.help() || line.version()) { // whatever the other options say
        if (wants_json(count, words))
            parsed.context.output.format = Format::json;
        return parsed;
    }
    take_global_options(line.options, makes_calls(line.path), parsed.context);
    parsed.command = line.command;
    parsed.context.arguments = line.arguments;
    return parsed;
}

bool wants_json(int count, const char *const *words)
{
    const char *const *end = std::find(words, words + count, std::string_view("--"));
    std::string_view before;
    for (const std::string_view word : std::span(words, end)) {
        if (word == "--json" || word.starts_with("--json="))
            return true;
        if ((before == "-o" || before == "--output") && is_json(word))
            return true;
        const bool assigned = word.starts_with("-o=") || word.starts_with("--output=");
        if (assigned && is_json(word.substr(word.find('=') + 1)))
            return true;
        before = word;
    }
    return false;
}

} // namespace cmifctl
