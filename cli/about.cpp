#include "about.h"

#include "completion.h"
#include "help.h"
#include "manual.h"

#include <cstdio>

namespace cli
{

std::optional<std::string> about(const Line &line)
{
    const Program &program = *line.program;
    if (line.help())
        return help_text(program, line.path);
    if (line.version())
        return std::string(program.name) + " " + program.version + "\n";
    if (line.path == "manual")
        return manual_page(program);
    if (line.path == "completion")
        return completion_script(program, line.arguments.text("shell"));
    if (line.path == "complete")
        return candidates_text(complete(program, line.arguments.all("words")));
    return std::nullopt;
}

int print(const Program &program, const std::string &text)
{
    if (std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0)
        return 0;
    std::perror((std::string(program.name) + ": standard output can't be written").c_str());
    return 1;
}

} // namespace cli
