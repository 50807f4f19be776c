#include "saved_text.h"

#include "escape.h"
#include "host_store.h"

#include <algorithm>

namespace host_store
{
namespace
{

constexpr const char *heading =
    "# CMIF configuration: key=value, one to a line.\n"
    "# \\n \\r \\t \\\\ and \\xHH stand for bytes that can't be written.\n";
constexpr std::string_view space = " \t\r";

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(space);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(space) - first + 1);
}

// Adds the line's entry, if it has one. What is wrong with the line, or null.
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
        return "an unknown escape after a backslash, or a NUL";
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
    for (const auto &[key, value] : entries)
        out += escaped(key, Side::key) + '=' + escaped(value, Side::value) + '\n';
    return out;
}

Saved from_text(std::string_view text)
{
    Saved saved;
    std::size_t number = 0, more = 0;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        ++number;
        const char *error = read_line(line, saved.entries);
        if (error != nullptr && saved.error.empty())
            saved.error = "line " + std::to_string(number) + ": " + error;
        else if (error != nullptr)
            ++more;
    }
    if (more > 0)
        saved.error += " (and " + std::to_string(more) + " more such lines)";
    return saved;
}

} // namespace host_store
