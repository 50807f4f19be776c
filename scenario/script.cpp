#include "script.h"

#include "events.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace scenario
{
namespace
{

using namespace std::chrono_literals;

constexpr std::size_t max_size = std::size_t{1024} * 1024;

void take_moment(Words &words, Step &step)
{
    if (words.take_if("at")) {
        step.moment = Step::Moment::at;
        step.time = words.take_duration("the time");
    } else if (words.take_if("every")) {
        step.moment = Step::Moment::every;
        step.time = words.take_duration("the time");
        if (step.time < 10ms)
            words.fail("the time between two is at least 10ms");
    } else if (words.take_if("when")) {
        step.moment = Step::Moment::when;
        step.event = take_event(words);
    }
}

std::string_view trimmed(std::string_view line)
{
    constexpr std::string_view space = " \t\r";
    const std::size_t first = std::min(line.find_first_not_of(space), line.size());
    line.remove_prefix(first);
    return line.substr(0, line.find_last_not_of(space) + 1);
}

Step parse_step(std::string_view line, const Commands &commands)
{
    Step step;
    Words words(line);
    step.text = trimmed(line.substr(0, words.comment()));
    take_moment(words, step);
    if (step.moment != Step::Moment::start && words.at_end())
        words.take("a command", rule_of(commands)); // fails
    step.action = parse_command(commands, words);
    return step;
}

std::string reason()
{
    return std::strerror(errno); // NOLINT(concurrency-mt-unsafe): called before there are threads
}

} // namespace

std::string read_script_file(const std::string &path)
{
    const auto close = [](std::FILE *file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.c_str(), "re"), close);
    if (!file)
        throw BadScript(path + ": cannot be read: " + reason());
    std::string text;
    std::array<char, 4096> part{};
    while (const std::size_t size = std::fread(part.data(), 1, part.size(), file.get())) {
        text.append(part.data(), size);
        if (text.size() > max_size)
            throw BadScript(path + ": cannot be read: a scenario has at most 1 MiB");
    }
    if (std::ferror(file.get()) != 0)
        throw BadScript(path + ": cannot be read: " + reason());
    return text;
}

Script parse_script(std::string_view text, const std::string &name, const Commands &commands)
{
    Script script;
    std::string errors;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (trimmed(line).empty() || trimmed(line).front() == '#')
            continue;
        try {
            script.push_back(parse_step(line, commands));
            script.back().line = number;
        } catch (const ScriptError &error) {
            errors += (errors.empty() ? "" : "\n") + name + ':' + std::to_string(number) + ':' +
                      std::to_string(error.column()) + ": " + error.what();
        }
    }
    if (!errors.empty())
        throw BadScript(errors);
    return script;
}

Script read_script(const std::string &path, const Commands &commands)
{
    return parse_script(read_script_file(path), path, commands);
}

} // namespace scenario
