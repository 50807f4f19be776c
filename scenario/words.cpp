#include "words.h"

#include <algorithm>
#include <charconv>

namespace scenario
{
namespace
{

using namespace std::chrono_literals;

constexpr auto max_duration = 24h;

struct Unit {
    std::string_view name;
    std::chrono::milliseconds length;
};
constexpr Unit units[] = {{"ms", 1ms}, {"s", 1s}, {"min", 1min}};

bool is_space(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

// Takes the quoted word that begins at `position`, and moves on to its end.
std::string take_quoted(std::string_view line, std::size_t &position)
{
    const std::size_t begin = position++;
    std::string text;
    for (; position < line.size() && line[position] != '"'; ++position) {
        if (line[position] == '\\' && position + 1 < line.size())
            ++position;
        text += line[position];
    }
    if (position == line.size())
        throw ScriptError(begin + 1, "the closing \" is missing");
    ++position;
    return text;
}

std::string take_plain(std::string_view line, std::size_t &position)
{
    const std::size_t begin = position;
    while (position < line.size() && !is_space(line[position]))
        ++position;
    return std::string(line.substr(begin, position - begin));
}

template <class Number>
std::optional<Number> parse(std::string_view text)
{
    Number number{};
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

std::optional<std::chrono::milliseconds> parse_duration(std::string_view text)
{
    const std::size_t digits = std::min(text.find_first_not_of("0123456789."), text.size());
    const auto count = parse<double>(text.substr(0, digits));
    const auto *const unit = std::find_if(std::begin(units), std::end(units), [&](const Unit &one) {
        return one.name == text.substr(digits);
    });
    if (!count || unit == std::end(units) || *count * unit->length > max_duration)
        return std::nullopt;
    return std::chrono::duration_cast<std::chrono::milliseconds>(*count * unit->length);
}

} // namespace

std::string quoted(const std::string &text)
{
    constexpr std::size_t max_shown = 60;
    return text.size() <= max_shown ? "'" + text + "'" : "'" + text.substr(0, max_shown) + "...'";
}

Words::Words(std::string_view line) : length_(line.size()), comment_(line.size())
{
    for (std::size_t position = 0; position < line.size();) {
        if (is_space(line[position])) {
            ++position;
            continue;
        }
        if (line[position] == '#') {
            comment_ = position;
            return;
        }
        const std::size_t column = position + 1;
        words_.push_back(
            {line[position] == '"' ? take_quoted(line, position) : take_plain(line, position),
             column});
    }
}

bool Words::next_is(std::string_view text)
{
    offer(text);
    return !at_end() && peek()->text == text;
}

void Words::offer(std::string_view text, std::string_view description)
{
    if (at_end())
        offers_.push_back({std::string(text), std::string(description)});
}

bool Words::take_if(std::string_view text)
{
    const bool taken = next_is(text);
    next_ += taken;
    return taken;
}

Word Words::take(std::string_view what, std::string_view rule)
{
    if (at_end())
        throw ScriptError(end_column(), std::string(what) + " is missing" +
                                            (rule.empty() ? "" : "; it is " + std::string(rule)));
    return words_[next_++];
}

int Words::take_number(std::string_view what, int min, int max)
{
    const std::string rule =
        "a whole number from " + std::to_string(min) + " to " + std::to_string(max);
    const auto number = parse<int>(take(what, rule).text);
    if (!number || *number < min || *number > max)
        refuse(what, rule);
    return *number;
}

std::string Words::take_digits(std::string_view what, std::size_t min, std::size_t max)
{
    const std::string rule =
        std::to_string(min) + (min == max ? "" : " to " + std::to_string(max)) + " digits";
    std::string text = take(what, rule).text;
    if (text.size() < min || text.size() > max ||
        text.find_first_not_of("0123456789") != std::string::npos)
        refuse(what, rule);
    return text;
}

std::string Words::take_one_of(std::string_view what,
                               std::initializer_list<std::string_view> allowed)
{
    for (const std::string_view one : allowed)
        offer(one);
    const std::string rule = one_of(allowed);
    std::string text = take(what, rule).text;
    if (std::find(allowed.begin(), allowed.end(), text) == allowed.end())
        refuse(what, rule);
    return text;
}

std::chrono::milliseconds Words::take_duration(std::string_view what)
{
    constexpr std::string_view rule = "a number with its unit: 250ms, 1.5s, 2min; at most 1440min";
    const auto duration = parse_duration(take(what, rule).text);
    if (!duration)
        refuse(what, rule);
    return *duration;
}

std::string Words::take_rest(std::string_view what)
{
    std::string text = take(what).text;
    while (!at_end())
        text += ' ' + words_[next_++].text;
    return text;
}

void Words::expect_end(std::string_view usage) const
{
    if (!at_end())
        throw ScriptError(peek()->column, "unexpected " + quoted(peek()->text) +
                                              (usage.empty() ? "" : "; ") + std::string(usage));
}

void Words::fail(const std::string &message) const
{
    const Word &word = words_.at(next_ - 1);
    throw ScriptError(word.column, message + ", not " + quoted(word.text));
}

void Words::refuse(std::string_view what, std::string_view rule) const
{
    fail(std::string(what) + " is " + std::string(rule));
}

std::size_t Words::end_column() const
{
    return length_ + 1;
}

} // namespace scenario
