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

// Takes the quoted word that begins at `place`, and moves on to its end.
std::string take_quoted(std::string_view line, std::size_t &place)
{
    const std::size_t begin = place++;
    std::string text;
    for (; place < line.size() && line[place] != '"'; ++place) {
        if (line[place] == '\\' && place + 1 < line.size())
            ++place;
        text += line[place];
    }
    if (place == line.size())
        throw ScriptError(begin + 1, "the closing \" is missing");
    ++place;
    return text;
}

std::string take_plain(std::string_view line, std::size_t &place)
{
    const std::size_t begin = place;
    while (place < line.size() && !is_space(line[place]))
        ++place;
    return std::string(line.substr(begin, place - begin));
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

Words::Words(std::string_view line) : length_(line.size())
{
    for (std::size_t place = 0; place < line.size();) {
        if (is_space(line[place])) {
            ++place;
            continue;
        }
        if (line[place] == '#')
            return;
        const std::size_t column = place + 1;
        words_.push_back(
            {line[place] == '"' ? take_quoted(line, place) : take_plain(line, place), column});
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

Word Words::take(std::string_view what)
{
    if (at_end())
        throw ScriptError(end_column(), std::string(what) + " is missing");
    return words_[next_++];
}

int Words::take_number(std::string_view what, int min, int max)
{
    const auto number = parse<int>(take(what).text);
    if (!number || *number < min || *number > max)
        fail(std::string(what) + " is a whole number from " + std::to_string(min) + " to " +
             std::to_string(max));
    return *number;
}

std::string Words::take_digits(std::string_view what, std::size_t min, std::size_t max)
{
    std::string text = take(what).text;
    if (text.size() < min || text.size() > max ||
        text.find_first_not_of("0123456789") != std::string::npos)
        fail(std::string(what) + " is " + std::to_string(min) +
             (min == max ? "" : " to " + std::to_string(max)) + " digits");
    return text;
}

std::string Words::take_one_of(std::string_view what,
                               std::initializer_list<std::string_view> allowed)
{
    for (const std::string_view one : allowed)
        offer(one);
    std::string text = take(what).text;
    if (std::find(allowed.begin(), allowed.end(), text) != allowed.end())
        return text;
    std::string list;
    for (const std::string_view one : allowed)
        list.append(list.empty() ? "" : ", ").append(one);
    fail(std::string(what) + " is one of: " + list);
}

std::chrono::milliseconds Words::take_duration(std::string_view what)
{
    const auto duration = parse_duration(take(what).text);
    if (!duration)
        fail(std::string(what) + " is a number with its unit: 250ms, 1.5s, 2min; at most 1440min");
    return *duration;
}

std::string Words::take_rest(std::string_view what)
{
    std::string text = take(what).text;
    while (!at_end())
        text += ' ' + words_[next_++].text;
    return text;
}

void Words::expect_end() const
{
    if (!at_end())
        throw ScriptError(peek()->column, "unexpected '" + peek()->text + "'");
}

void Words::fail(const std::string &message) const
{
    const Word &word = words_.at(next_ - 1);
    throw ScriptError(word.column, message + ", not '" + word.text + "'");
}

std::size_t Words::end_column() const
{
    return length_ + 1;
}

} // namespace scenario
