#include "completion.h"

#include "usage_error.h"
#include "walker.h"

#include <algorithm>

namespace cli
{
namespace
{

std::vector<Candidate> values_of(const Argument &argument)
{
    if (argument.traits.known_values != nullptr)
        return argument.traits.known_values();
    std::vector<Candidate> values;
    for (const Choice &choice : argument.choices)
        values.push_back({choice.name, argument.choices.size() > 1 ? choice.text : argument.help});
    return values;
}

std::vector<Candidate> possible_options(const Line &line)
{
    std::vector<Candidate> options;
    for (const Argument *option : options_of(line)) {
        const bool given = line.arguments.has(option->name) || line.options.has(option->name);
        if (option->traits.repeats || !given)
            options.push_back({std::string("--") + option->name, option->help});
    }
    return options;
}

// The values of an option that is typed as --name=value.
std::vector<Candidate> assignments(const Walker &walker, const std::string &name)
{
    const Argument *option = walker.find_option(name);
    std::vector<Candidate> values;
    if (option != nullptr && *option->value != '\0')
        values = values_of(*option);
    for (Candidate &candidate : values)
        candidate.value.insert(0, name + "=");
    return values;
}

std::vector<Candidate> words_after(const Walker &walker)
{
    if (walker.line().command == nullptr)
        return subcommands_of(*walker.line().program, walker.line().path);
    std::vector<Candidate> words;
    if (walker.line().path.empty() && walker.line().arguments.empty())
        words = subcommands_of(*walker.line().program, "");
    const Argument *next = walker.next_positional();
    if (next == nullptr)
        return words;
    const auto values = next->traits.known_after != nullptr
                            ? next->traits.known_after(walker.line().arguments.all(next->name))
                            : values_of(*next);
    words.insert(words.end(), values.begin(), values.end());
    return words;
}

std::vector<Candidate> all_candidates(const Walker &walker, const std::string &word)
{
    const std::size_t equals = word.find('=');
    if (walker.awaiting() != nullptr)
        return values_of(*walker.awaiting());
    if (!walker.takes_options() || !word.starts_with('-'))
        return words_after(walker);
    if (word.starts_with("--") && equals != std::string::npos)
        return assignments(walker, word.substr(0, equals));
    std::vector<Candidate> candidates = words_after(walker); // one of them may be "-"
    for (const Candidate &option : possible_options(walker.line()))
        candidates.push_back(option);
    return candidates;
}

// A shell would split or expand others.
bool is_plain(const std::string &value)
{
    return std::all_of(value.begin(), value.end(), [](char c) {
        return c > ' ' && c <= '~' &&
               std::string_view("\"'\\`$&|;<>()*?[]{}!#~:").find(c) == std::string_view::npos;
    });
}

// A description is one line without control characters.
std::string one_line(const std::string &text)
{
    std::string line = text;
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
    return line;
}

} // namespace

std::vector<Candidate> complete(const Program &program, const std::vector<std::string> &words)
{
    if (words.empty())
        return {};
    Walker walker(program);
    try {
        std::for_each(words.begin(), words.end() - 1,
                      [&walker](const std::string &word) { walker.take(word); });
    } catch (const UsageError &) {
        return {}; // nothing makes this line valid
    }
    std::vector<Candidate> candidates = all_candidates(walker, words.back());
    std::erase_if(candidates, [&words](const Candidate &candidate) {
        return !candidate.value.starts_with(words.back()) || !is_plain(candidate.value);
    });
    return candidates;
}

std::string candidates_text(const std::vector<Candidate> &candidates)
{
    std::string text;
    for (const Candidate &candidate : candidates)
        text += candidate.value + "\t" + one_line(candidate.description) + "\n";
    return text;
}

} // namespace cli
