#include "saved_text.h"

#include "host_store.h"

#include <array>
#include <optional>

namespace host_store
{

namespace
{

constexpr const char *heading =
    "# CMIF configuration: key=value, one to a line.\n"
    "# \\n \\r \\t \\\\ and \\xHH stand for bytes that can't be written.\n";
constexpr std::string_view hex_digits = "0123456789abcdef";
constexpr std::string_view blanks = " \t\r";

struct Escape {
    char letter;
    char byte;
};
constexpr std::array<Escape, 4> escapes{{{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'\\', '\\'}}};

void append_escaped(std::string &out, char c)
{
    for (const Escape &escape : escapes) {
        if (escape.byte == c) {
            out += {'\\', escape.letter};
            return;
        }
    }
    const auto byte = static_cast<unsigned char>(c);
    out += {'\\', 'x', hex_digits[byte >> 4U], hex_digits[byte & 15U]};
}

bool is_control(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

void append_text(std::string &out, std::string_view text, bool is_key)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool at_edge = i == 0 || i + 1 == text.size();
        const bool special_in_key = is_key && (c == '=' || (c == '#' && i == 0));
        if (is_control(c) || c == '\\' || (c == ' ' && at_edge) || special_in_key)
            append_escaped(out, c);
        else
            out += c;
    }
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<unsigned> hex_value(char c)
{
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t value = hex_digits.find(lower);
    if (value == std::string_view::npos)
        return std::nullopt;
    return static_cast<unsigned>(value);
}

// Takes what follows a backslash off the front of `rest`.
std::optional<char> take_escaped(std::string_view &rest)
{
    if (rest.empty())
        return std::nullopt;
    const char letter = rest.front();
    rest.remove_prefix(1);
    for (const Escape &escape : escapes) {
        if (escape.letter == letter)
            return escape.byte;
    }
    if (letter != 'x' || rest.size() < 2)
        return std::nullopt;
    const auto high = hex_value(rest[0]), low = hex_value(rest[1]);
    if (!high || !low)
        return std::nullopt;
    rest.remove_prefix(2);
    return static_cast<char>(*high * 16 + *low);
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        std::optional<char> c = text.front();
        text.remove_prefix(1);
        if (c == '\\')
            c = take_escaped(text);
        if (!c || *c == '\0')
            return std::nullopt;
        out += *c;
    }
    return out;
}

// Adds the line's entry, if it has one; what is wrong with it otherwise, or null.
const char *read_line(std::string_view line, Entries &entries)
{
    line = trimmed(line);
    if (line.empty() || line.front() == '#')
        return nullptr;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return "no = in it";
    auto key = unescaped(trimmed(line.substr(0, equals)));
    auto value = unescaped(trimmed(line.substr(equals + 1)));
    if (!key || !value)
        return "a backslash with no such meaning, or a byte 0";
    if (key->empty())
        return "no key before the =";
    if (key->size() > host_store_key_limit)
        return "the key is too long";
    if (value->size() > host_store_value_limit)
        return "the value is too long";
    entries.emplace_back(std::move(*key), std::move(*value));
    return nullptr;
}

} // namespace

std::string to_text(const Entries &entries)
{
    std::string out = heading;
    for (const auto &[key, value] : entries) {
        append_text(out, key, true);
        out += '=';
        append_text(out, value, false);
        out += '\n';
    }
    return out;
}

Saved from_text(std::string_view text)
{
    Saved saved;
    std::size_t number = 0, further = 0;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        ++number;
        const char *wrong = read_line(line, saved.entries);
        if (wrong != nullptr && saved.trouble.empty())
            saved.trouble = "line " + std::to_string(number) + ": " + wrong;
        else if (wrong != nullptr)
            ++further;
    }
    if (further > 0)
        saved.trouble += " (and " + std::to_string(further) + " more such lines)";
    return saved;
}

} // namespace host_store
